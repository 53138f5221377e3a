// JPEG and PNG: the same pixels as another program's, and nothing at all from files that are damaged or too large.

#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/strings/VData.h"
#include "tests/image/ImageTestSupport.h"

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

    /// Two files of a picture: in one piece, and woven so that it shows before it is complete. The last word of
    /// the arguments is the file's format.
    static std::vector<Bytes> Make(std::string arguments, char const* size) {
        bool const isPng = arguments.find("PNG") != arguments.npos;
        std::size_t const format = arguments.rfind(' ');
        arguments = arguments.insert(format, " -interlace @").insert(arguments.find(' '), size) + "-";
        std::vector<Bytes> files;
        for (char const* const weave : {"None", isPng ? "PNG" : "JPEG"}) {
            std::string command = arguments;
            files.push_back(Convert(command.replace(command.find('@'), 1, weave)));
        }
        return files;
    }
};

constexpr char const* kPictures[] = {
    "rose: -depth 8 PNG24:",
    "plasma: -depth 16 PNG48:",
    "radial-gradient: -alpha copy -depth 8 PNG32:",
    "plasma: -alpha copy -depth 16 PNG64:",
    "radial-gradient: -alpha copy -colorspace Gray -define png:color-type=4 PNG:",
    "rose: -colorspace Gray -transparent gray50 -define png:color-type=0 PNG:",
    "rose: -colors 40 -transparent red -define png:color-type=2 PNG:",
    "rose: -colors 100 -fuzz 20% -transparent red PNG8:",
    "rose: +dither -colors 16 -define png:bit-depth=4 PNG8:",
    "gradient: -colorspace Gray -depth 1 -define png:bit-depth=1 -define png:color-type=0 PNG:",
    "gradient: -colorspace Gray -depth 4 -define png:bit-depth=4 -define png:color-type=0 PNG:",
    "gradient: -colorspace Gray -depth 16 -define png:bit-depth=16 -define png:color-type=0 PNG:",
    "rose: -quality 25 JPEG:",
    "plasma: -sampling-factor 1x1 JPEG:",
    "plasma: -sampling-factor 1x2 JPEG:",
    "rose: -colorspace Gray JPEG:",
    "rose: -colorspace CMYK JPEG:",
};

TEST_F(Codec, MakesThePixelsThatAnotherProgramMakes) {
    REQUIRE_IMAGEMAGICK();
    for (std::string const arguments : kPictures) {
        for (Bytes const& bytes : Make(arguments, " -resize 67x45!")) {
            Pixels const pixels = Load(arguments.find("PNG") != arguments.npos, bytes);
            EXPECT_EQ(pixels.size(), 67U * 45U);
            EXPECT_TRUE(pixels == ReferencePixels(m_scratch.Path())) << arguments;
        }
    }
}

// The icons come with the packages that this project needs.
TEST_F(Codec, ReadsPicturesOfTheSystem) {
    REQUIRE_IMAGEMAGICK();
    std::vector<std::string> paths;
    for (auto const& entry : std::filesystem::recursive_directory_iterator("/usr/share/icons")) {
        if (entry.is_regular_file() && entry.path().extension() == ".png") {
            paths.push_back(entry.path());
        }
    }
    ASSERT_FALSE(paths.empty());
    std::sort(paths.begin(), paths.end());
    for (std::size_t i = 0; i < paths.size(); i += 1 + paths.size() / 15) {
        EXPECT_TRUE(Load(VImageIOPNG(), paths[i].c_str()) == ReferencePixels(paths[i])) << paths[i];
    }
}

constexpr char kSmall[] = " -crop 19x13+20+10 +repage -strip";

TEST_F(Codec, RefusesCutFilesAndSurvivesDamagedOnes) {
    REQUIRE_IMAGEMAGICK();
    for (std::string const arguments : {"rose: -alpha copy PNG32:", "rose: -colors 9 PNG8:", "rose: JPEG:",
                                        "rose: -colorspace CMYK JPEG:"}) {
        bool const isPng = arguments.find("PNG") != arguments.npos;
        std::vector<Bytes> const files = Make(arguments, kSmall);
        for (Bytes const& whole : files) {
            EXPECT_FALSE(Load(isPng, whole).empty());
            // A JPEG of one scan may lack the mark at its end.
            bool const mayLackMark = !isPng && &whole == &files[0];
            EXPECT_EQ(Load(isPng, whole.substr(0, whole.size() - 2)).empty(), !mayLackMark) << arguments;
            for (std::size_t i = 0; i < whole.size() - (mayLackMark ? 2 : 0); i += 1 + i / 64) {
                EXPECT_TRUE(Load(isPng, whole.substr(0, i)).empty()) << arguments << i;
                for (char const byte : {'\x00', '\x7F', '\x80', '\xFF'}) {
                    Bytes damaged = whole;
                    damaged[i] = byte;
                    Load(isPng, damaged);
                }
            }
        }
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

TEST_F(Codec, RefusesAJpegOfTooManyScans) {
    REQUIRE_IMAGEMAGICK();
    std::vector<Bytes> files = Make("rose: JPEG:", kSmall);
    // The last scan of a progressive file, again and again.
    std::size_t const scan = files[1].rfind("\xFF\xDA");
    Bytes const repeated = files[1].substr(scan, files[1].size() - 2 - scan);
    for (int scans = 0; scans <= VImageIOJPEG::kMaxScans; ++scans) {
        EXPECT_TRUE(scans > 3 || !Load(false, files[1]).empty());
        files[1].insert(scan, repeated);
    }
    EXPECT_TRUE(Load(false, files[1]).empty());
}

TEST_F(Codec, OnlyLoadsFiles) {
    VImage image;
    EXPECT_FALSE(VImageIOPNG().ConvertDataToImage(VData(100), image));
    EXPECT_FALSE(VImageIOJPEG().SaveImageToFile(image, m_scratch.Path()));
    EXPECT_EQ(VImageIOPNG().SupportedFileExtensions(), nullptr);
    EXPECT_EQ(VImageIOJPEG().LoadImageFromFile(nullptr), nullptr);
}

} // namespace
