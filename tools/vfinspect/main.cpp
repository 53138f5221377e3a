// The command line of the inspector.

#include "tools/vfinspect/Inspector.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
    try {
        return vfinspect::Run({argv + (argc > 0 ? 1 : 0), argv + argc}, std::cout, std::cerr);
    } catch (std::exception const& exception) {
        std::cerr << "vfinspect: " << exception.what() << '\n'; // no memory
        return 1;
    }
}
