// JPEG and PNG: the pixels of pictures of every kind, and nothing from files that are damaged or too large.

#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/strings/VData.h"
#include "tests/image/ImageTestSupport.h"
#include "tests/support/FailingReads.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <jpeglib.h>
#include <png.h>

namespace {

using namespace image_test;

class Codec : public ImageTest {
  protected:
    Codec() {
        VImage::ms_cacheEnabled = false;
        testing::internal::CaptureStderr(); // what is said about each file is of no interest here
    }
    ~Codec() override { testing::internal::GetCapturedStderr(); }

    using ImageTest::Load;
    Pixels Load(bool isPng, Bytes const& bytes) const {
        return isPng ? Load(VImageIOPNG(), bytes) : Load(VImageIOJPEG(), bytes);
    }
};

std::vector<std::string> PicturesOf(char const* extension) {
    std::vector<std::string> paths;
    for (auto const& entry : std::filesystem::directory_iterator(IMAGE_TEST_DATA)) {
        if (entry.path().extension() == extension) {
            paths.push_back(entry.path());
        }
    }
    std::sort(paths.begin(), paths.end());
    return paths;
}

TEST_F(Codec, ReadsEveryKindOfPicture) {
    std::size_t count = 0;
    for (char const* const extension : {".png", ".jpg"}) {
        for (std::string const& path : PicturesOf(extension)) {
            Bytes const words = BytesOf(std::filesystem::path(path).replace_extension(".bgra"));
            Pixels expected(words.size() / sizeof expected[0]);
            std::memcpy(expected.data(), words.data(), words.size());
            EXPECT_TRUE(Load(path.ends_with(".png"), BytesOf(path)) == expected) << path;
            ++count;
        }
    }
    EXPECT_EQ(count, 32U);
}

/// What a picture that decodes looks like; damage may not make up colours brighter than their alpha.
void ExpectPremultiplied(Pixels const& pixels, std::string const& path) {
    for (std::uint32_t const pixel : pixels) {
        std::uint32_t const most = std::max({pixel & 0xFF, pixel >> 8 & 0xFF, pixel >> 16 & 0xFF});
        ASSERT_LE(most, pixel >> 24) << path;
    }
}

TEST_F(Codec, RefusesCutFilesAndSurvivesDamagedOnes) {
    for (bool const isPng : {false, true}) {
        for (std::string const& path : PicturesOf(isPng ? ".png" : ".jpg")) {
            Bytes const whole = BytesOf(path);
            // A Huffman-coded JPEG of one scan is complete without its end-of-image marker.
            bool const mayLackMark =
                !isPng && path.find("progressive") == path.npos && path.find("arithmetic") == path.npos;
            EXPECT_EQ(Load(isPng, whole.substr(0, whole.size() - 2)).empty(), !mayLackMark) << path;
            for (std::size_t i = 0; i < whole.size() - (mayLackMark ? 2 : 0); i += 1 + i / 64) {
                EXPECT_TRUE(Load(isPng, whole.substr(0, i)).empty()) << path << i;
                for (char const byte : {'\x00', '\x7F', '\x80', '\xFF'}) {
                    Bytes damaged = whole;
                    damaged[i] = byte;
                    ExpectPremultiplied(Load(isPng, damaged), path);
                }
            }
        }
    }
}

TEST_F(Codec, RefusesPngChunksWithAnotherChecksum) {
    Bytes const whole = BytesOf(IMAGE_TEST_DATA "/palette-2.png");
    for (char const* const chunk : {"IHDR", "PLTE", "tRNS", "IDAT"}) {
        Bytes damaged = whole;
        std::size_t const name = damaged.find(chunk);
        auto const length = static_cast<std::size_t>(static_cast<unsigned char>(damaged[name - 1]));
        damaged[name + 4 + length] ^= 1;
        EXPECT_EQ(Load(true, damaged).empty(), std::strcmp(chunk, "tRNS") != 0) << chunk;
    }
}

TEST_F(Codec, RefusesFilesThatFailOrGetShorterWhileTheyAreRead) {
    for (char const* const name : {"rgb-8.png", "colour.jpg", "colour-progressive.jpg"}) {
        std::string const path = std::string(IMAGE_TEST_DATA "/") + name;
        bool const isPng = path.ends_with("png");
        auto const size = static_cast<long>(BytesOf(path).size());
        for (long readable = 0; readable < size - 2; readable += 1 + size / 20) {
            for (int const error : {0, EIO}) {
                testing_support::FailingReads const failing(readable, error);
                EXPECT_TRUE(
                    (isPng ? Load(VImageIOPNG(), path.c_str()) : Load(VImageIOJPEG(), path.c_str())).empty())
                    << name << readable;
            }
        }
        // All of the picture was read, but the decoder cannot know that.
        testing_support::FailingReads const failing(size - 2, EIO);
        EXPECT_TRUE((isPng ? Load(VImageIOPNG(), path.c_str()) : Load(VImageIOJPEG(), path.c_str())).empty());
    }
}

void WritePng(char const* path, std::uint32_t width, std::uint32_t height, unsigned char const* greys) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_GRAY;
    ASSERT_TRUE(png_image_write_to_file(&image, path, 0, greys, 0, nullptr));
}

void WriteJpeg(char const* path, std::uint32_t width, std::uint32_t height, unsigned char* greys) {
    std::FILE* const file = std::fopen(path, "wb");
    jpeg_compress_struct info;
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    jpeg_stdio_dest(&info, file);
    info.image_width = width;
    info.image_height = height;
    info.input_components = 1;
    info.in_color_space = JCS_GRAYSCALE;
    jpeg_set_defaults(&info);
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < height) {
        jpeg_write_scanlines(&info, &greys, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::fclose(file);
}

TEST_F(Codec, RefusesPicturesBeyondItsLimits) {
    struct {
        std::uint32_t width, height;
        bool isAllowed;
    } const sizes[] = {{16384, 1, true}, {16385, 1, false}, {1, 16385, false}, {16384, 4097, false}};
    for (auto const& [width, height, isAllowed] : sizes) {
        std::vector<unsigned char> greys(std::size_t{width} * height);
        WritePng(Path("a.png").c_str(), width, height, greys.data());
        WriteJpeg(Path("a.jpg").c_str(), width, height, greys.data());
        EXPECT_EQ(!Load(VImageIOPNG(), Path("a.png").c_str()).empty(), isAllowed) << width;
        EXPECT_EQ(!Load(VImageIOJPEG(), Path("a.jpg").c_str()).empty(), isAllowed) << width;
    }
}

TEST_F(Codec, RefusesPicturesBeyondTheBudget) {
    for (auto const& [isPng, name] : {std::pair{true, "/rgb-8.png"}, {false, "/grey.jpg"}}) {
        Bytes const bytes = BytesOf(std::string(IMAGE_TEST_DATA) + name);
        std::size_t const pixels = Load(isPng, bytes).size();
        VImage::SetPixelBudget(pixels);
        EXPECT_EQ(Load(isPng, bytes).size(), pixels);
        VImage::SetPixelBudget(pixels - 1);
        EXPECT_TRUE(Load(isPng, bytes).empty());
        VImage::SetPixelBudget(VImage::kNoPixelBudget);
        EXPECT_EQ(Load(isPng, bytes).size(), pixels);
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

TEST_F(Codec, RefusesAJpegThatPromisesMoreThanItsBytesCanHold) {
    for (char const* const name : {"/grey.jpg", "/grey-progressive.jpg"}) {
        Bytes const small = BytesOf(std::string(IMAGE_TEST_DATA) + name);
        EXPECT_EQ(Load(false, WithSize(small, 1024, 1024)).size(), 1024U * 1024U) << "damage that is bridged";
        EXPECT_TRUE(Load(false, WithSize(small, 1025, 1024)).empty());
        Bytes const filled = small + Bytes(1025 * 1024 / 512, 'x');
        EXPECT_EQ(Load(false, WithSize(filled, 1025, 1024)).size(), 1025U * 1024U);
    }
}

TEST_F(Codec, RefusesAJpegOfTooManyScans) {
    Bytes const whole = BytesOf(IMAGE_TEST_DATA "/colour-progressive.jpg");
    // The last scan of a progressive file, again and again.
    std::size_t const last = whole.rfind("\xFF\xDA");
    Bytes const scan = whole.substr(last, whole.size() - 2 - last);
    auto const repeated = [&](int scans) {
        Bytes file = whole;
        for (int i = 0; i < scans; ++i) {
            file.insert(last, scan);
        }
        return file;
    };
    constexpr int kScansOfTheFile = 10;
    EXPECT_FALSE(Load(false, repeated(VImageIOJPEG::kMaxScans - kScansOfTheFile)).empty());
    EXPECT_TRUE(Load(false, repeated(VImageIOJPEG::kMaxScans - kScansOfTheFile + 1)).empty());
}

TEST_F(Codec, OnlyLoadsFiles) {
    VImage image;
    EXPECT_FALSE(VImageIOPNG().ConvertDataToImage(VData(100), image));
    EXPECT_FALSE(VImageIOJPEG().SaveImageToFile(image, m_scratch.Path()));
    EXPECT_EQ(VImageIOPNG().SupportedFileExtensions(), nullptr);
    EXPECT_EQ(VImageIOJPEG().LoadImageFromFile(nullptr), nullptr);
}

} // namespace
