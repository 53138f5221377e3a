// For a debugger with the printers that are installed.

#include <foundation/VFoundation.h>

using namespace VFoundation;

int main() {
    LibraryScope const library;
    VString const text("in the program");
    VObjectArray array;
    array.AddObject(&text);
    return array.Count() == 1 ? 0 : 1; // the debugger stops here
}
