// PNG and JPEG: nothing, or a picture within the limits whose colours are multiplied by alpha. Each input is given to
// both codecs, and from memory to the reader, which finds the same; what it finds is scaled, written and read again.

#include "foundation/core/VObjectRef.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/image/VImageReader.h"
#include "foundation/image/VImageWriter.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"
#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <cstring>

using namespace VFoundation;
using fuzzing::Require;

namespace {

/// Keeps a run fast; the fuzzer likes large headers.
constexpr std::uint64_t kBudget = 1ULL << 18;

using ImageRef = VObjectRef<VImage>;

void CheckPixels(VBitmapImage const& bitmap) {
    for (std::uint32_t y = 0; y < bitmap.Height(); ++y) {
        for (std::uint32_t x = 0; x < bitmap.Width(); ++x) {
            std::uint32_t const pixel = bitmap.Row(y)[x];
            std::uint32_t const most = std::max({pixel & 0xFF, pixel >> 8 & 0xFF, pixel >> 16 & 0xFF});
            Require(most <= pixel >> 24, "no colour is brighter than its alpha");
        }
    }
}

ImageRef Load(IImageIO const& codec, char const* path) {
    auto const image = ImageRef::Adopt(codec.LoadImageFromFile(path));
    if (image) {
        VBitmapImage const* const bitmap = image->ImageRef();
        Require(bitmap != nullptr && bitmap->Width() == image->Width() && bitmap->Height() == image->Height(),
                "an image shows its bitmap");
        Require(std::uint64_t{bitmap->Width()} * bitmap->Height() <= kBudget, "the budget holds");
        CheckPixels(*bitmap);
    }
    return image;
}

void RequireSamePixels(VImage const& one, VImage const& other) {
    Require(one.Width() == other.Width() && one.Height() == other.Height(), "the same size");
    for (std::uint32_t y = 0; y < one.Height(); ++y) {
        Require(std::memcmp(one.ImageRef()->Row(y), other.ImageRef()->Row(y),
                            VBitmapImage::kBytesPerPixel * one.Width()) == 0,
                "the same pixels");
    }
}

/// `size` of the input serves as a number that the input chooses.
void CheckReader(ImageRef const& loaded, std::uint8_t const* bytes, std::size_t size) {
    VImageReader reader;
    ImageRef const image = reader.ReadBytes(bytes, size);
    bool const isTarga = reader.PictureFormat() == VImageReader::Format::kTarga;
    Require(isTarga || static_cast<bool>(image) == static_cast<bool>(loaded), "file and memory agree");
    Require(static_cast<bool>(image) == reader.ErrorDescription().IsEmpty(), "a reason exactly on failure");
    Require(reader.Orientation() >= 1 && reader.Orientation() <= 8, "an orientation of the standard");
    if (!image || isTarga) {
        return;
    }
    RequireSamePixels(*image, *loaded);
    auto const width = static_cast<std::uint32_t>(1 + size * 31 % 300);
    auto const height = static_cast<std::uint32_t>(1 + size * 17 % 200);
    auto scaled = image->ImageRef()->Scaled(width, height);
    Require(scaled && scaled->Width() == width && scaled->Height() == height, "any picture can be scaled");
    CheckPixels(*scaled);
    VObjectRef<VData> const written = VImageWriter(1).EncodePng(*image);
    Require(static_cast<bool>(written), "a loaded picture can be written");
    ImageRef const again = reader.ReadData(*written);
    Require(static_cast<bool>(again), "a written picture can be read");
    RequireSamePixels(*image, *again);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    VImage::ms_cacheEnabled = false;
    VImage::SetPixelBudget(kBudget);
    fuzzing::MemoryFile const file(bytes, size);
    ImageRef const png = Load(VImageIOPNG(), file.Path());
    ImageRef const jpeg = Load(VImageIOJPEG(), file.Path());
    Require(!png || !jpeg, "one format at most");
    CheckReader(png ? png : jpeg, bytes, size);
    return 0;
}
