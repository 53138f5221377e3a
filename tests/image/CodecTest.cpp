// JPEG and PNG: the same pixels as another program's, and nothing at all from files that are damaged or too large.

#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/strings/VData.h"
#include "tests/image/ImageTestSupport.h"

#include <algorithm>

namespace {

using namespace VFoundation;
using namespace image_test;

/// How ImageMagick makes a picture: the arguments before its path, which the last word joins.
struct Recipe {
    char const* name;
    char const* arguments;
};

class Codec : public ImageTest {
  protected:
    Codec() { VImage::ms_cacheEnabled = false; }

    static ImageRef Load(std::string const& path) {
        return ImageRef::Adopt(path.ends_with("png") ? VImageIOPNG().LoadImageFromFile(path.c_str())
                                                     : VImageIOJPEG().LoadImageFromFile(path.c_str()));
    }

    /// Makes the picture in one piece, and "woven_" it again the way that shows before it is complete.
    std::string Make(Recipe const& recipe, std::string const& size) const {
        std::string const arguments = recipe.arguments;
        std::size_t const last = arguments.rfind(' ') + 1;
        std::size_t const source = arguments.find(' ') + 1;
        std::string const format = arguments.substr(last);
        char const* const weave = std::string(recipe.name).ends_with("png") ? "PNG" : "JPEG";
        Convert(arguments.substr(0, source) + size + " " + arguments.substr(source, last - source) +
                "-interlace None -write " + format + Path(recipe.name) + " -interlace " + weave + " " +
                format + Path("woven_") + recipe.name);
        return Path(recipe.name);
    }

    static void ExpectPixels(std::string const& path, std::vector<std::uint32_t> const& reference) {
        ImageRef const image = Load(path);
        ASSERT_TRUE(image) << path;
        std::vector<std::uint32_t> const pixels = PixelsOf(*image);
        ASSERT_EQ(pixels.size(), reference.size()) << path;
        auto const differs =
            std::mismatch(pixels.begin(), pixels.end(), reference.begin()).first - pixels.begin();
        EXPECT_EQ(static_cast<std::size_t>(differs), pixels.size()) << path << ": first difference";
        EXPECT_TRUE(image->HasAlpha()) << path;
    }

    /// Loads the bytes under the name's extension; the image if there is one.
    ImageRef LoadBytes(std::string const& name, Bytes const& bytes) const {
        return Load(Write("changed_" + name, bytes));
    }
};

constexpr Recipe kPngs[] = {
    {"rgb8.png", "rose: -depth 8 PNG24:"},
    {"rgb16.png", "plasma: -depth 16 PNG48:"},
    {"rgba8.png", "plasma: -alpha set -channel A -evaluate set 40% -depth 8 PNG32:"},
    {"alphas.png", "radial-gradient: -alpha copy PNG32:"},
    {"rgba16.png", "plasma: -alpha copy -depth 16 PNG64:"},
    {"greyalpha.png", "radial-gradient: -alpha copy -colorspace Gray -define png:color-type=4 "},
    {"transparent_grey.png", "rose: -colorspace Gray -depth 8 -transparent gray50 -define png:color-type=0 "},
    {"transparent_rgb.png", "rose: -colors 40 -transparent red -define png:color-type=2 "},
    {"transparent_palette.png", "rose: -colors 100 -fuzz 20% -transparent red PNG8:"},
    {"grey1.png", "gradient: -colorspace Gray -depth 1 -define png:bit-depth=1 -define png:color-type=0 "},
    {"grey2.png", "gradient: -colorspace Gray -depth 2 -define png:bit-depth=2 -define png:color-type=0 "},
    {"grey4.png", "gradient: -colorspace Gray -depth 4 -define png:bit-depth=4 -define png:color-type=0 "},
    {"grey8.png", "gradient: -colorspace Gray -depth 8 -define png:bit-depth=8 -define png:color-type=0 "},
    {"grey16.png", "gradient: -colorspace Gray -depth 16 -define png:bit-depth=16 -define png:color-type=0 "},
    {"palette1.png", "rose: +dither -colors 2 -define png:bit-depth=1 PNG8:"},
    {"palette4.png", "rose: +dither -colors 16 -define png:bit-depth=4 PNG8:"},
};

constexpr Recipe kJpegs[] = {
    {"plain.jpg", "rose: "},
    {"coarse.jpeg", "rose: -quality 25 "},
    {"full.jpg", "plasma: -sampling-factor 1x1 "},
    {"half.jpg", "plasma: -sampling-factor 2x1 "},
    {"upright.jpg", "plasma: -sampling-factor 1x2 "},
    {"grey.jpg", "rose: -colorspace Gray "},
    {"inks.jpg", "rose: -colorspace CMYK "},
};

TEST_F(Codec, MakesThePixelsThatAnotherProgramMakes) {
    REQUIRE_IMAGEMAGICK();
    auto const compare = [this](Recipe const& recipe) {
        std::string const path = Make(recipe, "-resize 67x45!");
        std::vector<std::uint32_t> const reference = ReferencePixels(path);
        ExpectPixels(path, reference);
        ExpectPixels(Path("woven_") + recipe.name, reference);
    };
    std::for_each(std::begin(kPngs), std::end(kPngs), compare);
    std::for_each(std::begin(kJpegs), std::end(kJpegs), compare);
}

// The icon theme comes with the packages that this project needs.
TEST_F(Codec, ReadsPicturesOfTheSystem) {
    REQUIRE_IMAGEMAGICK();
    std::vector<std::string> paths;
    for (auto const* const folder :
         {"/usr/share/icons/Adwaita", "/usr/share/icons/hicolor", "/usr/share/info"}) {
        std::error_code none;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(folder, none)) {
            if (entry.is_regular_file() && entry.path().extension() == ".png") {
                paths.push_back(entry.path());
            }
        }
    }
    ASSERT_FALSE(paths.empty());
    std::sort(paths.begin(), paths.end());
    for (std::size_t i = 0; i < paths.size(); i += 1 + paths.size() / 15) {
        ExpectPixels(paths[i], ReferencePixels(paths[i]));
    }
}

constexpr Recipe kSmall[] = {
    {"colour.png", "rose: -alpha copy PNG32:"},
    {"palette.png", "rose: -colors 9 PNG8:"},
    {"colour.jpg", "rose: "},
    {"inks.jpg", "rose: -colorspace CMYK "},
};
constexpr char kSmallSize[] = "-crop 19x13+20+10 +repage -strip";

class DamagedCodec : public Codec {
  protected:
    // What is said about each file is of no interest here.
    void SetUp() override { testing::internal::CaptureStderr(); }
    void TearDown() override { testing::internal::GetCapturedStderr(); }

    /// Calls `check` with the name and the bytes of every small picture.
    template <class Check>
    void ForEachSmall(Check check) const {
        for (Recipe const& recipe : kSmall) {
            Make(recipe, kSmallSize);
            check(std::string(recipe.name), ReadFile(Path(recipe.name)));
            std::string const woven = std::string("woven_") + recipe.name;
            check(woven, ReadFile(Path(woven)));
        }
    }
};

TEST_F(DamagedCodec, RefusesAFileThatWasCutOff) {
    REQUIRE_IMAGEMAGICK();
    ForEachSmall([this](std::string const& name, Bytes const& whole) {
        ASSERT_TRUE(LoadBytes(name, whole)) << name;
        // Where one scan tells it all, the mark at the end may be missing.
        bool const isOneScan = name == "colour.jpg" || name == "inks.jpg";
        for (std::size_t length = 0; length < whole.size() - (isOneScan ? 2 : 0); length += 1 + length / 64) {
            Bytes const cut(whole.begin(), whole.begin() + static_cast<long>(length));
            EXPECT_FALSE(LoadBytes(name, cut)) << name << " cut to " << length;
        }
        EXPECT_EQ(isOneScan, !!LoadBytes(name, Bytes(whole.begin(), whole.end() - 2))) << name;
    });
}

TEST_F(DamagedCodec, SurvivesEveryDamagedByte) {
    REQUIRE_IMAGEMAGICK();
    ForEachSmall([this](std::string const& name, Bytes const& whole) {
        for (std::size_t i = 0; i < whole.size(); i += 1 + i / 100) {
            for (unsigned char const byte : std::initializer_list<unsigned char>{0x00, 0x7F, 0x80, 0xFF}) {
                Bytes damaged = whole;
                damaged[i] = byte;
                ImageRef const image = LoadBytes(name, damaged);
                if (image) {
                    EXPECT_EQ(PixelsOf(*image).size(), std::size_t{image->Width()} * image->Height());
                }
            }
        }
    });
}

/// The checksum of a PNG chunk.
std::uint32_t ChunkSum(unsigned char const* bytes, std::size_t count) {
    std::uint32_t sum = ~0U;
    for (std::size_t i = 0; i < count; ++i) {
        sum ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit) {
            sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320U : 0);
        }
    }
    return ~sum;
}

void PutBigEndian(Bytes& bytes, std::size_t offset, std::uint32_t number, int count) {
    for (int i = 0; i < count; ++i) {
        bytes[offset + static_cast<std::size_t>(i)] =
            static_cast<unsigned char>(number >> 8 * (count - 1 - i));
    }
}

TEST_F(DamagedCodec, RefusesPicturesBeyondItsLimits) {
    REQUIRE_IMAGEMAGICK();
    struct {
        std::uint32_t width, height;
    } const sizes[] = {
        {VImageIOPNG::kMaxSide + 1, 1}, {1, VImageIOPNG::kMaxSide + 1}, {16384, 4097}, {0, 13}};
    Bytes png = ReadFile(Make(kSmall[0], kSmallSize));
    Bytes jpeg = ReadFile(Make(kSmall[2], kSmallSize));
    unsigned char const kStartOfFrame[] = {0xFF, 0xC0};
    auto const frame =
        std::search(jpeg.begin(), jpeg.end(), std::begin(kStartOfFrame), std::end(kStartOfFrame));
    auto const jpegSize = static_cast<std::size_t>(frame - jpeg.begin()) + 5;
    for (auto const& size : sizes) {
        PutBigEndian(png, 16, size.width, 4);
        PutBigEndian(png, 20, size.height, 4);
        PutBigEndian(png, 29, ChunkSum(&png[12], 17), 4);
        EXPECT_FALSE(LoadBytes("large.png", png)) << size.width;
        PutBigEndian(jpeg, jpegSize, size.height, 2);
        PutBigEndian(jpeg, jpegSize + 2, size.width, 2);
        EXPECT_FALSE(LoadBytes("large.jpg", jpeg)) << size.width;
    }
}

TEST_F(DamagedCodec, RefusesAJpegWithTooManyScans) {
    REQUIRE_IMAGEMAGICK();
    Make(kSmall[2], kSmallSize);
    Bytes const whole = ReadFile(Path("woven_colour.jpg"));
    unsigned char const kStartOfScan[] = {0xFF, 0xDA};
    auto const scan =
        std::find_end(whole.begin(), whole.end(), std::begin(kStartOfScan), std::end(kStartOfScan));
    auto const end = whole.end() - 2;
    ASSERT_LT(scan, end);
    for (int const extra : {3, VImageIOJPEG::kMaxScans}) {
        Bytes longer(whole.begin(), end);
        for (int i = 0; i < extra; ++i) {
            longer.insert(longer.end(), scan, end);
        }
        longer.insert(longer.end(), end, whole.end());
        EXPECT_EQ(!!LoadBytes("scans.jpg", longer), extra < VImageIOJPEG::kMaxScans) << extra;
    }
}

TEST_F(Codec, OnlyLoadsFiles) {
    VImageIOPNG const png;
    VImageIOJPEG const jpeg;
    for (IImageIO const* const codec : std::initializer_list<IImageIO const*>{&png, &jpeg}) {
        VImage image;
        EXPECT_FALSE(codec->ConvertDataToImage(VData(100), image));
        EXPECT_FALSE(codec->SaveImageToFile(image, VString(Path("x.png").c_str())));
        EXPECT_EQ(codec->SupportedFileExtensions(), nullptr);
        EXPECT_EQ(codec->LoadImageFromFile(nullptr), nullptr);
    }
    EXPECT_FALSE(std::filesystem::exists(Path("x.png")));
}

} // namespace
