// JPEG and PNG: the pixels of pictures of every kind, and nothing from files that are damaged or too large.

#include "foundation/image/ImageLoadReason.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/strings/VData.h"
#include "tests/image/ImageTestSupport.h"
#include "tests/support/FailingReads.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include <png.h>

namespace {

using namespace image_test;

class ImageFileCodecTest : public ImageTest {
  protected:
    ImageFileCodecTest() {
        VImage::ms_cacheEnabled = false;
        testing::internal::CaptureStderr(); // what is said about each file is of no interest here
    }
    ~ImageFileCodecTest() override { testing::internal::GetCapturedStderr(); }

    static Pixels LoadFile(bool isPng, std::string const& path) {
        return isPng ? ImageTest::Load(VImageIOPNG(), path.c_str())
                     : ImageTest::Load(VImageIOJPEG(), path.c_str());
    }
    Pixels Load(bool isPng, Bytes const& bytes) const {
        m_scratch.SetBytes(bytes);
        return LoadFile(isPng, m_scratch.Path());
    }
};

Bytes Picture(std::string const& name) {
    return BytesOf(IMAGE_TEST_DATA "/" + name);
}

// Damaged files are for fuzz.image.
TEST_F(ImageFileCodecTest, ReadsEveryKindOfPictureAndRefusesItCut) {
    int count = 0;
    for (auto const& entry : std::filesystem::directory_iterator(IMAGE_TEST_DATA)) {
        std::string const path = entry.path();
        bool const isPng = path.ends_with(".png");
        if (!isPng && !path.ends_with(".jpg")) {
            continue;
        }
        SCOPED_TRACE(path);
        ++count;
        Bytes const words = BytesOf(std::filesystem::path(path).replace_extension(".bgra"));
        Pixels expected(words.size() / sizeof expected[0]);
        std::memcpy(expected.data(), words.data(), words.size());
        Bytes const whole = BytesOf(path);
        VImage::SetPixelBudget(expected.size() - 1);
        EXPECT_TRUE(Load(isPng, whole).empty());
        VImage::SetPixelBudget(expected.size());
        EXPECT_TRUE(Load(isPng, whole) == expected);
        VImage::SetPixelBudget(VImage::kNoPixelBudget);
        // A Huffman-coded JPEG of one scan is complete without its end-of-image marker.
        bool const mayLackMark =
            !isPng && path.find("progressive") == path.npos && path.find("arithmetic") == path.npos;
        EXPECT_EQ(Load(isPng, whole.substr(0, whole.size() - 2)).empty(), !mayLackMark);
        for (std::size_t i = 0; i < whole.size() - (mayLackMark ? 2 : 0); i += 1 + i / 256) {
            EXPECT_TRUE(Load(isPng, whole.substr(0, i)).empty()) << i;
        }
    }
    EXPECT_EQ(count, 33);
}

TEST_F(ImageFileCodecTest, RefusesPngChunksWithAnotherChecksum) {
    Bytes const whole = Picture("palette-2.png");
    for (char const* const chunk : {"IHDR", "PLTE", "tRNS", "IDAT"}) {
        Bytes damaged = whole;
        std::size_t const name = damaged.find(chunk);
        auto const length = static_cast<std::size_t>(static_cast<unsigned char>(damaged[name - 1]));
        damaged[name + 4 + length] ^= 1;
        EXPECT_EQ(Load(true, damaged).empty(), std::strcmp(chunk, "tRNS") != 0) << chunk;
    }
}

TEST_F(ImageFileCodecTest, RefusesFilesThatFailOrGetShorterWhileTheyAreRead) {
    for (std::string const name : {"rgb-8.png", "colour.jpg", "colour-progressive.jpg"}) {
        auto const size = static_cast<long>(Picture(name).size());
        for (long readable = 0; readable < size - 2; readable += 1 + size / 20) {
            for (int const error : {0, EIO}) {
                testing_support::FailingReads const failing(readable, error);
                EXPECT_TRUE(LoadFile(name == "rgb-8.png", IMAGE_TEST_DATA "/" + name).empty())
                    << name << readable;
            }
        }
        // All of the picture was read, but the decoder cannot know that.
        testing_support::FailingReads const failing(size - 2, EIO);
        EXPECT_TRUE(LoadFile(name == "rgb-8.png", IMAGE_TEST_DATA "/" + name).empty()) << name;
    }
}

Bytes WithSize(Bytes jpeg, std::uint32_t width, std::uint32_t height) {
    std::size_t const frame = std::min(jpeg.find("\xFF\xC0"), jpeg.find("\xFF\xC2"));
    for (std::size_t i = 0; i < 2; ++i) {
        jpeg[frame + 5 + i] = static_cast<char>(height >> (8 - 8 * i));
        jpeg[frame + 7 + i] = static_cast<char>(width >> (8 - 8 * i));
    }
    return jpeg;
}

TEST_F(ImageFileCodecTest, RefusesPicturesBeyondItsLimits) {
    struct {
        std::uint32_t width, height;
        bool isAllowed;
    } const sizes[] = {{16384, 1, true}, {16385, 1, false}, {1, 16385, false}, {16384, 4097, false}};
    for (auto const& [width, height, isAllowed] : sizes) {
        std::vector<unsigned char> const greys(std::size_t{width} * height);
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        image.width = width;
        image.height = height;
        image.format = PNG_FORMAT_GRAY;
        ASSERT_TRUE(png_image_write_to_file(&image, m_scratch.Path(), 0, greys.data(), 0, nullptr));
        EXPECT_EQ(LoadFile(true, m_scratch.Path()).empty(), !isAllowed) << width;
        Bytes const jpeg = Picture("grey.jpg") + Bytes(greys.size() / 512, 'x'); // enough for its size
        EXPECT_EQ(Load(false, WithSize(jpeg, width, height)).empty(), !isAllowed) << width;
    }
}

TEST_F(ImageFileCodecTest, RefusesAJpegThatPromisesMoreThanItsBytesCanHold) {
    for (char const* const name : {"grey.jpg", "grey-progressive.jpg"}) {
        Bytes const small = Picture(name);
        EXPECT_EQ(Load(false, WithSize(small, 1024, 1024)).size(), 1024U * 1024U) << "damage that is bridged";
        EXPECT_TRUE(Load(false, WithSize(small, 1025, 1024)).empty());
        Bytes const filled = small + Bytes(1025 * 1024 / 512, 'x');
        EXPECT_EQ(Load(false, WithSize(filled, 1025, 1024)).size(), 1025U * 1024U);
    }
}

/// The file with the last of its scans again and again, until it has so many.
Bytes WithScans(Bytes file, int scans) {
    std::size_t const last = file.rfind("\xFF\xDA");
    Bytes const scan = file.substr(last, file.size() - 2 - last);
    int found = 0;
    for (std::size_t at = file.find("\xFF\xDA"); at != file.npos; at = file.find("\xFF\xDA", at + 1)) {
        ++found;
    }
    for (; found < scans; ++found) {
        file.insert(last, scan);
    }
    return file;
}

TEST_F(ImageFileCodecTest, RefusesAJpegOfTooManyScans) {
    Bytes const whole = Picture("colour-progressive.jpg");
    EXPECT_FALSE(Load(false, WithScans(whole, VImageIOJPEG::kMaxScans)).empty());
    EXPECT_TRUE(Load(false, WithScans(whole, VImageIOJPEG::kMaxScans + 1)).empty());
    // Of a large picture fewer: the bound is on scans times pixels.
    Bytes const grey = Picture("grey-progressive.jpg");
    auto const isRead = [this, &grey](std::uint32_t height, int scans) {
        Bytes const filler(1 << 16, 'x'); // enough for its size
        return !Load(false, WithSize(WithScans(grey, scans), 16384, height) + filler).empty();
    };
    static_assert(VImageIOJPEG::kMaxScanPixels == 16384ULL * 2048 * VImageIOJPEG::kMaxScans);
    EXPECT_TRUE(isRead(2048, VImageIOJPEG::kMaxScans));
    EXPECT_TRUE(isRead(2049, VImageIOJPEG::kMaxScans - 1));
    EXPECT_FALSE(isRead(2049, VImageIOJPEG::kMaxScans));
}

TEST_F(ImageFileCodecTest, OnlyLoadsFiles) {
    VImage image;
    EXPECT_FALSE(VImageIOPNG().ConvertDataToImage(VData(100), image));
    EXPECT_FALSE(VImageIOJPEG().SaveImageToFile(image, m_scratch.Path()));
    EXPECT_EQ(VImageIOPNG().SupportedFileExtensions(), nullptr);
    EXPECT_EQ(VImageIOJPEG().LoadImageFromFile(nullptr), nullptr);
}

TEST_F(ImageFileCodecTest, TellsItsReasonToWhoeverAsks) {
    ImageLoadReason const reason;
    EXPECT_TRUE(reason.ErrorDescription().IsEmpty());
    EXPECT_EQ(VImage::ImageFromFile("none.png"), nullptr);
    EXPECT_EQ(reason.ErrorDescription(), "cannot load none.png: there is no such file");
    {
        ImageLoadReason const inner;
        EXPECT_EQ(VImage::ImageFromFile("a.gif"), nullptr);
        EXPECT_EQ(inner.ErrorDescription(), "cannot load a.gif: its name has no extension of a picture");
    }
    EXPECT_EQ(reason.ErrorDescription(), "cannot load none.png: there is no such file");
    Bytes const whole = Picture("rgb-8.png");
    EXPECT_TRUE(Load(true, whole.substr(0, whole.size() / 2)).empty());
    std::string const start = std::string("cannot load ") + m_scratch.Path() + ": ";
    EXPECT_TRUE(reason.ErrorDescription().View().starts_with(start)) << reason.ErrorDescription();
    EXPECT_EQ(VImageIOTarga().LoadImageFromFile(m_scratch.Path()), nullptr);
    EXPECT_TRUE(reason.ErrorDescription().View().starts_with(start)) << reason.ErrorDescription();
    for (std::string const extension : {"png", "jpg", "tga"}) {
        std::string const path = m_scratch.Folder() / ("folder." + extension);
        std::filesystem::create_directory(path);
        EXPECT_EQ(VImage::ImageFromFile(path.c_str()), nullptr);
        EXPECT_EQ(reason.ErrorDescription(), "cannot load " + path + ": Is a directory");
    }
    VImage image;
    EXPECT_FALSE(VImageIOTarga().ConvertDataToImage(VData(3), image));
    EXPECT_TRUE(reason.ErrorDescription().View().starts_with("cannot load a picture in memory: "))
        << reason.ErrorDescription();
}

} // namespace
