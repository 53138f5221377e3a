#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/image/VImage.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VString.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace image_test {

using namespace VFoundation;
using Bytes = std::string;
using Pixels = std::vector<std::uint32_t>;
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

    /// The pixels that the codec finds in a file of these bytes; none when it is refused.
    template <class Codec>
    Pixels Load(Codec const& codec, Bytes const& bytes) const {
        m_scratch.SetBytes(bytes);
        return Load(codec, m_scratch.Path());
    }
    template <class Codec>
    static Pixels Load(Codec const& codec, char const* path) {
        return PixelsOf(ImageRef::Adopt(codec.LoadImageFromFile(path)).Get());
    }

    testing_support::ScratchFile m_scratch;
};

/// Without ImageMagick CI fails, and everyone else goes without the comparison.
#define REQUIRE_IMAGEMAGICK()                                                                                \
    if (IMAGEMAGICK_CONVERT[0] == '\0') {                                                                    \
        ASSERT_EQ(std::getenv("CI"), nullptr) << "ImageMagick is missing";                                   \
        GTEST_SKIP() << "ImageMagick is missing";                                                            \
    }

/// What ImageMagick's convert writes to its standard output.
inline Bytes Convert(std::string const& arguments) {
    std::string const command = std::string(IMAGEMAGICK_CONVERT) + " " + arguments;
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    Bytes output;
    char block[65536];
    for (std::size_t read = 0; pipe && (read = std::fread(block, 1, sizeof block, pipe)) > 0;) {
        output.append(block, read);
    }
    EXPECT_TRUE(pipe && ::pclose(pipe) == 0) << command;
    return output;
}

/// The pixels of a picture, given by convert's arguments, as a bitmap would hold them.
inline Pixels ReferencePixels(std::string const& arguments) {
    Bytes const raw = Convert(arguments + " -depth 16 -endian MSB bgra:-");
    auto const byte = [&raw](std::size_t i) { return static_cast<unsigned>(raw[i]) & 0xFF; };
    Pixels pixels;
    for (std::size_t i = 0; i + 8 <= raw.size(); i += 8) {
        unsigned channels[4]; // 65535 becomes 255, rounded
        for (std::size_t c = 0; c < 4; ++c) {
            channels[c] = ((byte(i + 2 * c) << 8 | byte(i + 2 * c + 1)) * 2 + 257) / 514;
        }
        auto const part = [&channels](unsigned c) {
            return (channels[c] * channels[3] * 2 + 255) / 510 << 8 * c;
        };
        pixels.push_back(channels[3] << 24 | part(2) | part(1) | part(0));
    }
    return pixels;
}

} // namespace image_test
