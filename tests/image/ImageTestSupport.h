#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/image/VImage.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VString.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace image_test {

using Bytes = std::vector<unsigned char>;
using ImageRef = VFoundation::VObjectRef<VFoundation::VImage>;

/// A folder of its own for each test; the cache and the log are on.
class ImageTest : public testing::Test {
  protected:
    ImageTest() {
        char pattern[] = "/tmp/image_test_XXXXXX";
        m_folder = ::mkdtemp(pattern);
        VFoundation::VLog::SetSafeStartup();
        VFoundation::VImage::TheClass();
        VFoundation::VImage::InitializeClass();
    }
    ~ImageTest() override {
        VFoundation::VImage::UninitializeClass();
        VFoundation::VLog::SetSafeShutdown();
        std::filesystem::remove_all(m_folder);
    }

    std::string Path(std::string const& name) const { return m_folder + "/" + name; }

    std::string Write(std::string const& name, Bytes const& bytes) const {
        std::ofstream(Path(name), std::ios::binary)
            .write(reinterpret_cast<char const*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return Path(name);
    }

    std::string m_folder;
};

inline Bytes ReadFile(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

inline std::vector<std::uint32_t> PixelsOf(VFoundation::VImage const& image) {
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t y = 0; y < image.Height(); ++y) {
        std::uint32_t const* const row = image.ImageRef()->Row(y);
        pixels.insert(pixels.end(), row, row + image.Width());
    }
    return pixels;
}

/// What `work` writes to the standard error stream.
template <class Work>
std::string ErrorsOf(Work work) {
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
}

/// Whether ImageMagick is there; without it CI fails and everyone else goes without the comparison.
#define REQUIRE_IMAGEMAGICK()                                                                                \
    if (IMAGEMAGICK_CONVERT[0] == '\0') {                                                                    \
        ASSERT_EQ(std::getenv("CI"), nullptr) << "ImageMagick is missing";                                   \
        GTEST_SKIP() << "ImageMagick is missing";                                                            \
    }

/// Runs ImageMagick's convert; what it writes to its standard output.
inline Bytes Convert(std::string const& arguments) {
    Bytes output;
    std::string const command = std::string(IMAGEMAGICK_CONVERT) + " " + arguments;
    std::FILE* const pipe = ::popen(command.c_str(), "r");
    unsigned char block[65536];
    for (std::size_t read = 0; pipe && (read = std::fread(block, 1, sizeof block, pipe)) > 0;) {
        output.insert(output.end(), block, block + read);
    }
    if (!pipe || ::pclose(pipe) != 0) {
        ADD_FAILURE() << command;
    }
    return output;
}

/// The pixels that ImageMagick makes of a file, and options behind it, as a bitmap would hold them.
inline std::vector<std::uint32_t> ReferencePixels(std::string const& file) {
    Bytes const raw = Convert(file + " -depth 16 -endian LSB bgra:-");
    std::vector<std::uint32_t> pixels;
    for (std::size_t i = 0; i + 8 <= raw.size(); i += 8) {
        auto const channel = [&raw, i](std::size_t c) { // 65535 is 255, rounded
            return ((raw[i + 2 * c] | raw[i + 2 * c + 1] << 8) * 2U + 257) / 514;
        };
        unsigned const alpha = channel(3);
        std::uint32_t pixel = alpha << 24;
        for (unsigned c = 0; c < 3; ++c) {
            pixel |= (channel(c) * alpha * 2 + 255) / 510 << 8 * c;
        }
        pixels.push_back(pixel);
    }
    return pixels;
}

} // namespace image_test
