// JPEG and PNG: the same pixels as another program's, and nothing at all from files that are damaged or too large.

#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/strings/VData.h"
#include "tests/image/ImageTestSupport.h"

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

TEST_F(Codec, RefusesPicturesBeyondItsLimits) {
    REQUIRE_IMAGEMAGICK();
    Bytes const jpeg = Make("rose: JPEG:", kSmall)[0];
    Bytes const png = Make("rose: PNG24:", kSmall)[0];
    auto const bigEndian = [](std::uint32_t number, unsigned count) {
        Bytes bytes;
        for (unsigned i = count; i-- > 0;) {
            bytes += static_cast<char>(number >> 8 * i);
        }
        return bytes;
    };
    auto const checksum = [](Bytes const& chunk) {
        std::uint32_t sum = ~0U;
        for (std::size_t bit = 0; bit < 8 * chunk.size(); ++bit) {
            std::uint32_t const next = static_cast<unsigned char>(chunk[bit / 8]) >> bit % 8;
            sum = sum >> 1 ^ ((sum ^ next) & 1 ? 0xEDB88320U : 0);
        }
        return ~sum;
    };
    struct {
        std::uint32_t width, height;
        bool isAllowed;
    } const sizes[] = {
        {19, 13, true}, {VImageIOPNG::kMaxSide + 1, 1, false}, {1, 16385, false}, {16384, 4097, false}};
    for (auto const& [width, height, isAllowed] : sizes) {
        Bytes sized = jpeg;
        sized.replace(jpeg.find("\xFF\xC0") + 5, 4, bigEndian(height, 2) + bigEndian(width, 2));
        EXPECT_EQ(!Load(false, sized).empty(), isAllowed) << width;
        sized = png;
        sized.replace(16, 8, bigEndian(width, 4) + bigEndian(height, 4));
        sized.replace(29, 4, bigEndian(checksum(sized.substr(12, 17)), 4));
        EXPECT_EQ(!Load(true, sized).empty(), isAllowed) << width;
    }
    // The last scan of a progressive file, again and again.
    Bytes const woven = Make("rose: JPEG:", kSmall)[1];
    std::size_t const scan = woven.rfind("\xFF\xDA");
    for (int const extra : {3, VImageIOJPEG::kMaxScans}) {
        Bytes longer = woven;
        for (int i = 0; i < extra; ++i) {
            longer.insert(scan, woven.substr(scan, woven.size() - 2 - scan));
        }
        EXPECT_EQ(!Load(false, longer).empty(), extra < VImageIOJPEG::kMaxScans) << extra;
    }
}

TEST_F(Codec, OnlyLoadsFiles) {
    VImageIOPNG const png;
    VImageIOJPEG const jpeg;
    for (IImageIO const* const codec : std::initializer_list<IImageIO const*>{&png, &jpeg}) {
        VImage image;
        EXPECT_FALSE(codec->ConvertDataToImage(VData(100), image));
        EXPECT_FALSE(codec->SaveImageToFile(image, m_scratch.Path()));
        EXPECT_EQ(codec->SupportedFileExtensions(), nullptr);
        EXPECT_EQ(codec->LoadImageFromFile(nullptr), nullptr);
    }
}

} // namespace
