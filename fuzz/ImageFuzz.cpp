// PNG and JPEG: nothing, or a picture within the limits whose colours are multiplied by alpha. Each input is given to
// both codecs.

#include "foundation/core/VObjectRef.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/strings/VString.h"
#include "fuzz/FuzzInput.h"

#include <algorithm>

using namespace VFoundation;
using fuzzing::Require;

namespace {

/// Keeps a run fast; the fuzzer likes large headers.
constexpr std::uint64_t kBudget = 1ULL << 18;

void Check(IImageIO const& codec, char const* path) {
    auto const image = VObjectRef<VImage>::Adopt(codec.LoadImageFromFile(path));
    if (!image) {
        return;
    }
    VBitmapImage const* const bitmap = image->ImageRef();
    Require(bitmap != nullptr && bitmap->Width() == image->Width() && bitmap->Height() == image->Height(),
            "an image shows its bitmap");
    Require(std::uint64_t{bitmap->Width()} * bitmap->Height() <= kBudget, "the budget holds");
    for (std::uint32_t y = 0; y < bitmap->Height(); ++y) {
        for (std::uint32_t x = 0; x < bitmap->Width(); ++x) {
            std::uint32_t const pixel = bitmap->Row(y)[x];
            std::uint32_t const most = std::max({pixel & 0xFF, pixel >> 8 & 0xFF, pixel >> 16 & 0xFF});
            Require(most <= pixel >> 24, "no colour is brighter than its alpha");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    VImage::ms_cacheEnabled = false;
    VImage::SetPixelBudget(kBudget);
    fuzzing::MemoryFile const file(bytes, size);
    Check(VImageIOPNG(), file.Path());
    Check(VImageIOJPEG(), file.Path());
    return 0;
}
