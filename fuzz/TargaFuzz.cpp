// Targa: the same picture from memory and from a file, which travels on through the saver.

#include "foundation/core/VObjectRef.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"
#include "fuzz/FuzzInput.h"

#include <cstring>

using namespace VFoundation;
using fuzzing::Require;

namespace {

void RequireSamePixels(VImage const& one, VImage const& other) {
    Require(one.Width() == other.Width(), "the same width");
    Require(one.Height() == other.Height(), "the same height");
    Require(one.HasAlpha() == other.HasAlpha(), "alpha in both or in none");
    for (std::uint32_t y = 0; y < one.Height(); ++y) {
        Require(std::memcmp(one.ImageRef()->Row(y), other.ImageRef()->Row(y),
                            VBitmapImage::kBytesPerPixel * one.Width()) == 0,
                "the same pixels");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    VImage::ms_cacheEnabled = false;
    VData data(size);
    if (size) {
        std::memcpy(data.Bytes(), bytes, size);
    }
    VImage image;
    bool const isImage = VImageIOTarga().ConvertDataToImage(data, image);
    Require(isImage == (image.ImageRef() != nullptr), "a bitmap exactly on success");
    fuzzing::MemoryFile const file(bytes, size);
    auto const loaded = VObjectRef<VImage>::Adopt(VImageIOTarga().LoadImageFromFile(file.Path()));
    Require(isImage == static_cast<bool>(loaded), "file and memory agree");
    if (isImage) {
        RequireSamePixels(image, *loaded);
        fuzzing::MemoryFile const saved("", 0);
        Require(VImageIOTarga(true).SaveImageToFile(image, saved.Path()), "a loaded picture can be saved");
        auto const again = VObjectRef<VImage>::Adopt(VImageIOTarga().LoadImageFromFile(saved.Path()));
        Require(again && again->Width() == image.Width() && again->Height() == image.Height(),
                "a saved picture can be loaded");
    }
    return 0;
}
