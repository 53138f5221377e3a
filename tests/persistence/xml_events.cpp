// Prints what the library reads of XML documents, for xml_differential.py. The standard input is a sequence of
// documents, each after its length in a line; the output has one line for each: "-", or its events.

#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOPugiXmlFactory.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"

#include <iostream>
#include <string>

using namespace VFoundation;

namespace {

void Print(char kind, std::string_view text) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::cout << ' ' << kind;
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        std::cout << kDigits[byte >> 4] << kDigits[byte & 15];
    }
}

/// The node at the cursor. Attributes are looked for by the names that the script uses.
void PrintNode(VXMLFile& file) {
    char const* text = nullptr;
    if (file.GetNodeType() == IXMLFileIO::kText && file.ReadText(text)) {
        Print('t', text);
    }
    if (file.GetNodeType() != IXMLFileIO::kElement) {
        return;
    }
    Print('s', file.GetNodeName());
    for (char const* const name : {"a", "b", "c"}) {
        if (file.ReadAttribute(name, text)) {
            Print(*name, text);
        }
    }
    file.OpenChildren();
    while (file.OpenNextSibling()) {
        PrintNode(file);
    }
    file.CloseChildren();
    Print('e', "");
}

} // namespace

/// The argument names the back end.
int main(int count, char** arguments) {
    if (count > 1 && std::string(arguments[1]) == "PugiXml") {
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOPugiXmlFactory);
    } else {
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory);
    }
    std::string line;
    while (std::getline(std::cin, line)) {
        std::string document(std::stoul(line), '\0');
        std::cin.read(document.data(), static_cast<std::streamsize>(document.size()));
        VXMLFile file;
        if (file.LoadFile("", reinterpret_cast<unsigned char const*>(document.data()), document.size(),
                          nullptr)) {
            PrintNode(file);
        } else {
            std::cout << '-';
        }
        std::cout << '\n';
    }
    VXMLFile::ClearIXMLFileIOFactory();
}
