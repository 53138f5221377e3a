#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/image/IImageIO.h"
#include "foundation/image/VImage.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VString.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace image_test {

using namespace VFoundation;
using Bytes = std::string;
using Pixels = std::vector<std::uint32_t>;
using testing_support::BytesOf;
using ImageRef = VObjectRef<VImage>;

inline Pixels PixelsOf(VImage const* image) {
    Pixels pixels;
    for (std::uint32_t y = 0; image && y < image->Height(); ++y) {
        std::uint32_t const* const row = image->ImageRef()->Row(y);
        pixels.insert(pixels.end(), row, row + image->Width());
    }
    return pixels;
}

/// The cache and the log are on, and there is a folder for files.
class ImageTest : public testing::Test {
  protected:
    ImageTest() {
        VLog::SetSafeStartup();
        VImage::TheClass();
        VImage::InitializeClass();
    }
    ~ImageTest() override {
        VImage::UninitializeClass();
        VLog::SetSafeShutdown();
    }

    std::string Path(std::string const& name) const { return (m_scratch.Folder() / name).string(); }

    /// The pixels that the codec finds in the file; none when it is refused.
    static Pixels Load(IImageIO const& codec, char const* path) {
        return PixelsOf(ImageRef::Adopt(codec.LoadImageFromFile(path)).Get());
    }

    static void SetPixels(VImage& image, std::uint32_t width, Pixels const& pixels) {
        auto const height = static_cast<std::uint32_t>(pixels.size()) / width;
        image.SetImageRef(VBitmapImage::FromPixels(width, height, pixels).Detach());
    }

    testing_support::ScratchFile m_scratch;
};

} // namespace image_test
