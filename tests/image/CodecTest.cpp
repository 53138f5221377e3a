// JPEG and PNG: the same pixels as another program's, and nothing at all from files that are damaged or too large.

#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/strings/VData.h"
#include "tests/image/ImageTestSupport.h"

#include <algorithm>

namespace {

using namespace VFoundation;
using namespace image_test;

/// A file and how ImageMagick makes it; '@' in the arguments is the file's path.
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

    std::string Make(Recipe const& recipe, std::string const& options = "") const {
        std::string arguments = recipe.arguments;
        arguments.replace(arguments.find('@'), 1, Path(recipe.name));
        std::size_t const source = arguments.find(' ');
        Convert(arguments.insert(source, " " + options));
        return Path(recipe.name);
    }

    static void ExpectSamePixels(std::string const& path) {
        ImageRef const image = Load(path);
        ASSERT_TRUE(image) << path;
        std::vector<std::uint32_t> const pixels = PixelsOf(*image);
        std::vector<std::uint32_t> const reference = ReferencePixels(path);
        ASSERT_EQ(pixels.size(), reference.size()) << path;
        auto const differs =
            std::mismatch(pixels.begin(), pixels.end(), reference.begin()).first - pixels.begin();
        EXPECT_EQ(static_cast<std::size_t>(differs), pixels.size()) << path << ": first difference";
        EXPECT_TRUE(image->HasAlpha()) << path;
    }

    /// Loads the bytes under the name's extension; the image if there is one. What is said about it is dropped.
    ImageRef LoadBytes(std::string const& name, Bytes const& bytes) const {
        ImageRef image;
        std::string const path = Write("changed_" + name, bytes);
        ErrorsOf([&] { image = Load(path); });
        return image;
    }
};

constexpr Recipe kPngs[] = {
    {"rgb8.png", "rose: -depth 8 PNG24:@"},
    {"rgb16.png", "plasma: -depth 16 PNG48:@"},
    {"rgba8.png", "plasma: -alpha set -channel A -evaluate set 40% -depth 8 PNG32:@"},
    {"alphas.png", "radial-gradient: -alpha copy PNG32:@"},
    {"rgba16.png", "plasma: -alpha copy -depth 16 PNG64:@"},
    {"greyalpha.png", "radial-gradient: -alpha copy -colorspace Gray -define png:color-type=4 @"},
    {"transparent_grey.png",
     "rose: -colorspace Gray -depth 8 -transparent gray50 -define png:color-type=0 @"},
    {"transparent_rgb.png", "rose: -colors 40 -transparent red -define png:color-type=2 @"},
    {"transparent_palette.png", "rose: -colors 100 -fuzz 20% -transparent red PNG8:@"},
    {"grey1.png", "gradient: -colorspace Gray -depth 1 -define png:bit-depth=1 -define png:color-type=0 @"},
    {"grey2.png", "gradient: -colorspace Gray -depth 2 -define png:bit-depth=2 -define png:color-type=0 @"},
    {"grey4.png", "gradient: -colorspace Gray -depth 4 -define png:bit-depth=4 -define png:color-type=0 @"},
    {"grey8.png", "gradient: -colorspace Gray -depth 8 -define png:bit-depth=8 -define png:color-type=0 @"},
    {"grey16.png",
     "gradient: -colorspace Gray -depth 16 -define png:bit-depth=16 -define png:color-type=0 @"},
    {"palette1.png", "rose: +dither -colors 2 -define png:bit-depth=1 PNG8:@"},
    {"palette4.png", "rose: +dither -colors 16 -define png:bit-depth=4 PNG8:@"},
};

constexpr Recipe kJpegs[] = {
    {"plain.jpg", "rose: @"},
    {"coarse.jpeg", "rose: -quality 25 @"},
    {"full.jpg", "plasma: -sampling-factor 1x1 @"},
    {"half.jpg", "plasma: -sampling-factor 2x1 @"},
    {"upright.jpg", "plasma: -sampling-factor 1x2 @"},
    {"grey.jpg", "rose: -colorspace Gray @"},
    {"inks.jpg", "rose: -colorspace CMYK @"},
};

TEST_F(Codec, MakesThePixelsThatAnotherProgramMakes) {
    REQUIRE_IMAGEMAGICK();
    for (Recipe const& recipe : kPngs) {
        ExpectSamePixels(Make(recipe, "-resize 67x45! -interlace None"));
        ExpectSamePixels(Make(recipe, "-resize 67x45! -interlace PNG"));
    }
    for (Recipe const& recipe : kJpegs) {
        ExpectSamePixels(Make(recipe, "-resize 67x45! -interlace None"));
        ExpectSamePixels(Make(recipe, "-resize 67x45! -interlace JPEG"));
    }
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
    for (std::size_t i = 0; i < paths.size(); i += 1 + paths.size() / 25) {
        ExpectSamePixels(paths[i]);
    }
}

constexpr Recipe kSmall[] = {
    {"plain.png", "rose: -strip -alpha copy PNG32:@"},
    {"woven.png", "rose: -strip -interlace PNG PNG24:@"},
    {"palette.png", "rose: -strip -colors 9 PNG8:@"},
    {"plain.jpg", "rose: -strip @"},
    {"progressive.jpg", "rose: -strip -interlace JPEG @"},
    {"inks.jpg", "rose: -strip -colorspace CMYK @"},
};

TEST_F(Codec, RefusesAFileThatWasCutOff) {
    REQUIRE_IMAGEMAGICK();
    for (Recipe const& recipe : kSmall) {
        Bytes const whole = ReadFile(Make(recipe, "-crop 19x13+20+10 +repage"));
        ASSERT_TRUE(LoadBytes(recipe.name, whole)) << recipe.name;
        // Where one scan tells it all, the mark at the end may be missing.
        bool const isOneScan =
            std::string(recipe.name) == "plain.jpg" || std::string(recipe.name) == "inks.jpg";
        for (std::size_t length = 0; length < whole.size() - (isOneScan ? 2 : 0); length += 1 + length / 64) {
            Bytes const cut(whole.begin(), whole.begin() + static_cast<long>(length));
            EXPECT_FALSE(LoadBytes(recipe.name, cut)) << recipe.name << " cut to " << length;
        }
        EXPECT_EQ(isOneScan, !!LoadBytes(recipe.name, Bytes(whole.begin(), whole.end() - 2))) << recipe.name;
    }
}

TEST_F(Codec, SurvivesEveryDamagedByte) {
    REQUIRE_IMAGEMAGICK();
    for (Recipe const& recipe : kSmall) {
        Bytes const whole = ReadFile(Make(recipe, "-crop 19x13+20+10 +repage"));
        for (std::size_t i = 0; i < whole.size(); i += 1 + i / 200) {
            for (unsigned char const byte : std::initializer_list<unsigned char>{0x00, 0x7F, 0x80, 0xFF}) {
                Bytes damaged = whole;
                damaged[i] = byte;
                ImageRef const image = LoadBytes(recipe.name, damaged);
                if (image) {
                    EXPECT_EQ(PixelsOf(*image).size(), std::size_t{image->Width()} * image->Height());
                }
            }
        }
    }
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

TEST_F(Codec, RefusesPicturesBeyondItsLimits) {
    REQUIRE_IMAGEMAGICK();
    struct {
        std::uint32_t width, height;
    } const sizes[] = {
        {VImageIOPNG::kMaxSide + 1, 1}, {1, VImageIOPNG::kMaxSide + 1}, {16384, 4097}, {0, 13}};
    Bytes png = ReadFile(Make(kSmall[0], "-crop 19x13+20+10 +repage"));
    Bytes jpeg = ReadFile(Make(kSmall[3], "-crop 19x13+20+10 +repage"));
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

TEST_F(Codec, RefusesAJpegWithTooManyScans) {
    REQUIRE_IMAGEMAGICK();
    Bytes const whole = ReadFile(Make(kSmall[4], "-crop 19x13+20+10 +repage"));
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
