// Loads a picture (Targa, JPEG or PNG) and saves it as a Targa file.
//   example_PictureToTarga photo.jpg photo.tga

#include "foundation/VFoundation.h"

#include <cstdio>

using namespace VFoundation;

namespace {

bool Convert(char const* from, char const* to) {
    VImageReader reader;
    auto const image = reader.ReadFile(from);
    if (!image) {
        std::fprintf(stderr, "%s\n", reader.ErrorDescription().CString());
        return false;
    }
    std::printf("%s: %u x %u pixels%s\n", image->GetName().CString(), image->Width(), image->Height(),
                image->HasAlpha() ? ", has alpha" : "");
    bool const flip = true; // a Targa file begins with its bottom row, an image with its top row
    ImageLoadReason const reason;
    bool const isSaved = VImageIOTarga(flip, VImageIOTarga::Saving::kReplacing).SaveImageToFile(*image, to);
    if (!isSaved) {
        std::fprintf(stderr, "%s\n", reason.ErrorDescription().CString());
    }
    return isSaved;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s <picture> <targa file>\n", argv[0]);
        return 2;
    }
    LibraryScope const library;
    return Convert(argv[1], argv[2]) ? 0 : 1;
}
