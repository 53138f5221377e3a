// Loads a picture (Targa, JPEG or PNG) and saves it as a Targa file.
//   example_PictureToTarga photo.jpg photo.tga

#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/strings/VString.h"

#include <cstdio>

using namespace VFoundation;

namespace {

bool Convert(char const* from, char const* to) {
    auto const image = VObjectRef<VImage>::Adopt(VImage::ImageFromFile(from));
    if (!image) {
        return false; // the codec has said why
    }
    std::printf("%s: %u x %u pixels%s\n", image->GetName().CString(), image->Width(), image->Height(),
                image->HasAlpha() ? ", may have alpha" : "");
    bool const flip = true; // a Targa file begins with its bottom row, an image with its top row
    return VImageIOTarga().SaveImageFromPixelData(*image, to, flip);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s <picture> <targa file>\n", argv[0]);
        return 2;
    }
    InitializeLibrary(true);
    bool const converted = Convert(argv[1], argv[2]);
    bool const destroyRegistry = true;
    bool const dumpClasses = false;
    bool const quiet = true;
    UninitializeLibrary(destroyRegistry, dumpClasses, quiet);
    return converted ? 0 : 1;
}
