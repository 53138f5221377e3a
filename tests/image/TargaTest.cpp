#include "foundation/containers/VObjectArray.h"
#include "foundation/image/VBitmapContext.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/strings/VData.h"
#include "tests/image/ImageTestSupport.h"

#include <cstring>
#include <new>

namespace {

long s_allocationsLeft = -1; // -1: none fails

bool MustFail() {
    return s_allocationsLeft >= 0 && s_allocationsLeft-- == 0;
}

} // namespace

extern "C" {
void* __real_malloc(std::size_t size);
void* __wrap_malloc(std::size_t size) {
    return MustFail() ? nullptr : __real_malloc(size);
}
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = MustFail() ? nullptr : __real_malloc(size);
    if (!block) {
        throw std::bad_alloc();
    }
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

using namespace VFoundation;
using namespace image_test;

using Pixels = std::vector<std::uint32_t>;

constexpr char kFooter[] = "\0\0\0\0\0\0\0\0TRUEVISION-XFILE."; // with its zero 26 bytes

struct Fields {
    unsigned width = 2;
    unsigned height = 1;
    unsigned char depth = 32;
    unsigned char idLength = 0;
    unsigned char colourMap = 0;
    unsigned char imageType = 2;
};

Bytes Header(Fields const& f) {
    auto const byte = [](unsigned number) { return static_cast<unsigned char>(number); };
    return {f.idLength,
            f.colourMap,
            f.imageType,
            0,
            0,
            0,
            0,
            0,
            0,
            0,
            0,
            0,
            byte(f.width),
            byte(f.width >> 8),
            byte(f.height),
            byte(f.height >> 8),
            f.depth,
            0};
}

Bytes FileOf(Fields const& fields, Bytes const& body) {
    Bytes file = Header(fields);
    file.insert(file.end(), body.begin(), body.end());
    file.insert(file.end(), std::begin(kFooter), std::end(kFooter));
    return file;
}

/// The pixels, none if the data cannot be converted.
Pixels Convert(Bytes const& file, bool* hasAlpha = nullptr) {
    VData data(file.size());
    std::copy(file.begin(), file.end(), data.Bytes());
    VImage image;
    if (!VImageIOTarga().ConvertDataToImage(data, image)) {
        EXPECT_EQ(image.ImageRef(), nullptr);
        return {};
    }
    if (hasAlpha) {
        *hasAlpha = image.HasAlpha();
    }
    return PixelsOf(image);
}

std::uint32_t Premultiplied(unsigned red, unsigned green, unsigned blue, unsigned alpha) {
    return alpha << 24 | red * alpha / 256 << 16 | green * alpha / 256 << 8 | blue * alpha / 256;
}

Bytes Ramp(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<unsigned char>(i * 37 + i / 256 + 255);
    }
    return bytes;
}

class Targa : public ImageTest {
  protected:
    Targa() { VImage::ms_cacheEnabled = false; }

    static ImageRef ImageOf(std::uint32_t width, Pixels const& pixels) {
        auto image = ImageRef::Adopt(VImage::New());
        auto const height = static_cast<std::uint32_t>(pixels.size()) / width;
        auto* const copy = new Pixels(pixels);
        image->SetImageRef(VBitmapImage::Create(
            width, height, 4UL * width, copy, copy->data(), 4 * copy->size(),
            [](void* info, void const*, unsigned long) { delete static_cast<Pixels*>(info); }));
        return image;
    }
    static ImageRef Load(std::string const& path) {
        return ImageRef::Adopt(VImageIOTarga().LoadImageFromFile(path.c_str()));
    }
    Pixels LoadBytes(Bytes const& bytes) const {
        ImageRef const image = Load(Write("picture.tga", bytes));
        return image ? PixelsOf(*image) : Pixels{};
    }
};

TEST_F(Targa, ReadsEveryDepthFromTheBottomRow) {
    for (unsigned const width : {1U, 2U, 7U, 13U}) {
        for (unsigned const depth : {8U, 24U, 32U}) {
            unsigned const height = 3;
            Bytes const body = Ramp(std::size_t{width} * height * depth / 8);
            Pixels expected;
            for (unsigned y = 0; y < height; ++y) {
                for (unsigned x = 0; x < width; ++x) {
                    unsigned char const* const p =
                        &body[(std::size_t{height - 1 - y} * width + x) * depth / 8];
                    expected.push_back(depth == 8 ? 0xFF000000U | p[0] * 0x010101U
                                       : depth == 24
                                           ? 0xFF000000U | unsigned{p[2]} << 16 | unsigned{p[1]} << 8 | p[0]
                                           : Premultiplied(p[2], p[1], p[0], p[3]));
                }
            }
            bool hasAlpha = false;
            Bytes const file =
                FileOf({.width = width, .height = height, .depth = static_cast<unsigned char>(depth)}, body);
            EXPECT_EQ(Convert(file, &hasAlpha), expected) << width << " at " << depth;
            EXPECT_EQ(hasAlpha, depth == 32);
            EXPECT_EQ(LoadBytes(file), expected);
        }
    }
}

TEST_F(Targa, DividesColoursBy256AndKeepsAlpha) {
    Bytes const body = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x80, 0x01, 0x80, 0x10, 0x20, 0x30, 0x00};
    EXPECT_EQ(Convert(FileOf({.width = 3}, body)), (Pixels{0xFFFEFEFE, 0x8000407F, 0x00000000}));
}

TEST_F(Targa, FindsThePixelsByIdLengthAndColourMap) {
    Bytes const pixel = {1, 2, 3, 255, 5, 6, 7, 255};
    Pixels const expected = {Premultiplied(3, 2, 1, 255), Premultiplied(7, 6, 5, 255)};
    Bytes withId(5, 0xEE);
    withId.insert(withId.end(), pixel.begin(), pixel.end());
    EXPECT_EQ(Convert(FileOf({.idLength = 5}, withId)), expected);
    // With a colour map the pixels are looked for 18 bytes before those of a file without one.
    EXPECT_EQ(Convert(FileOf({.idLength = 18, .colourMap = 1}, pixel)), expected);
    Fields const map{.depth = 8, .idLength = 0, .colourMap = 1};
    EXPECT_EQ(Convert(FileOf(map, {})), (Pixels{0xFF000000, 0xFF010101})); // the header's first bytes
    // 0xFF is -1: the header's last byte, 0, is the first pixel.
    EXPECT_EQ(Convert(FileOf({.depth = 8, .idLength = 0xFF}, {9})), (Pixels{0xFF000000, 0xFF090909}));
    EXPECT_TRUE(Convert(FileOf({.depth = 8, .idLength = 0xFF, .colourMap = 1}, pixel)).empty());
    EXPECT_TRUE(Convert(FileOf({.depth = 8, .idLength = 0x80}, pixel)).empty());
    // Not looked at: what kind of picture the header tells.
    EXPECT_EQ(Convert(FileOf({.imageType = 10}, pixel)), expected);
}

TEST_F(Targa, RefusesWhatItCannotRead) {
    Bytes const body(8, 1);
    for (unsigned const depth : {0U, 1U, 7U, 9U, 15U, 16U, 23U, 33U, 64U, 255U}) {
        EXPECT_TRUE(Convert(FileOf({.depth = static_cast<unsigned char>(depth)}, Bytes(100))).empty())
            << depth;
    }
    Bytes const whole = FileOf({}, body);
    ASSERT_FALSE(Convert(whole).empty());
    for (std::size_t length = 0; length < whole.size(); ++length) {
        Bytes cut(whole.begin(), whole.begin() + static_cast<long>(length));
        EXPECT_TRUE(Convert(cut).empty()) << length;
        EXPECT_TRUE(LoadBytes(cut).empty()) << length;
    }
    EXPECT_TRUE(Convert(FileOf({}, Bytes(7, 1))).empty());
    EXPECT_TRUE(Convert(FileOf({.width = 0}, body)).empty());
    EXPECT_TRUE(Convert(FileOf({.height = 0}, body)).empty());
    for (unsigned char const depth : std::initializer_list<unsigned char>{8, 24, 32}) {
        Bytes const promise = FileOf({.width = 65535, .height = 65535, .depth = depth}, {});
        ASSERT_EQ(promise.size(), VImageIOTarga::kMinFileSize);
        EXPECT_TRUE(Convert(promise).empty());
        EXPECT_TRUE(LoadBytes(promise).empty());
    }
    for (std::size_t i = 0; i < 16; ++i) {
        Bytes unsigned_ = whole;
        unsigned_[whole.size() - 18 + i] ^= 0x20;
        EXPECT_TRUE(Convert(unsigned_).empty());
    }
}

TEST_F(Targa, ReadsAnyHeaderTheSameWayFromDataAndFromAFile) {
    Bytes const whole = FileOf({.width = 5, .height = 4}, Ramp(80));
    for (std::size_t i = 0; i < 18; ++i) {
        for (unsigned char const byte : std::initializer_list<unsigned char>{0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            Bytes changed = whole;
            changed[i] = byte;
            EXPECT_EQ(Convert(changed), LoadBytes(changed)) << i;
        }
    }
    // Several blocks, and rows longer than a block.
    for (Fields const& fields : {Fields{.width = 301, .height = 299}, Fields{.width = 65535, .height = 3}}) {
        Bytes const large = FileOf(fields, Ramp(std::size_t{fields.width} * fields.height * 4));
        EXPECT_EQ(Convert(large), LoadBytes(large));
    }
}

TEST_F(Targa, ReadsFilesOfOtherPrograms) {
    struct {
        char const* name;
        unsigned channels;
    } const files[] = {{"grey", 1}, {"colour", 3}, {"alpha", 4}};
    for (auto const& file : files) {
        ImageRef const image = Load(std::string(IMAGE_TEST_DATA "/pillow_") + file.name + ".tga");
        ASSERT_TRUE(image) << file.name;
        ASSERT_EQ(image->Width(), 13U);
        ASSERT_EQ(image->Height(), 7U);
        for (unsigned y = 0; y < 7; ++y) {
            for (unsigned x = 0; x < 13; ++x) {
                unsigned const red = x * 20 % 256;
                unsigned const green = y * 35 % 256;
                unsigned const blue = (x * 7 + y * 11) % 256;
                std::uint32_t const expected = file.channels == 1 ? 0xFF000000U | red * 0x010101U
                                               : file.channels == 3
                                                   ? 0xFF000000U | red << 16 | green << 8 | blue
                                                   : Premultiplied(red, green, blue, (x * 40 + y * 3) % 256);
                EXPECT_EQ(image->ImageRef()->Row(y)[x], expected) << file.name << x << ' ' << y;
            }
        }
    }
}

TEST_F(Targa, NeedsTheFooterThatSomeProgramsOmit) {
    REQUIRE_IMAGEMAGICK();
    image_test::Convert("rose: -depth 8 -compress None " + Path("bare.tga"));
    Bytes bytes = ReadFile(Path("bare.tga"));
    EXPECT_TRUE(LoadBytes(bytes).empty());
    bytes.insert(bytes.end(), std::begin(kFooter), std::end(kFooter));
    EXPECT_EQ(LoadBytes(bytes), ReferencePixels(Path("bare.tga") + " -auto-orient"));
}

Pixels const kSaved = {0xFF102030, 0x8040007F, 0x00000000, 0xFFFFFFFF, 0xFE010203, 0x01010001};

TEST_F(Targa, SavesTheBytesOfTheFormat) {
    ImageRef const image = ImageOf(3, kSaved);
    std::string const path = Path("saved.tga");
    VString const target(path.c_str());
    Bytes const golden = ReadFile(IMAGE_TEST_DATA "/saved.tga");
    Bytes const flipped = ReadFile(IMAGE_TEST_DATA "/saved_flipped.tga");
    ASSERT_EQ(golden.size(), 68U);
    EXPECT_TRUE(VImageIOTarga().SaveImageToFile(*image, target));
    EXPECT_EQ(ReadFile(path), golden);
    EXPECT_TRUE(VImageIOTarga(true).SaveImageToFile(*image, target));
    EXPECT_EQ(ReadFile(path), flipped);
    EXPECT_TRUE(VImageIOTarga(true).SaveImageFromPixelData(*image, target, false));
    EXPECT_EQ(ReadFile(path), golden);

    auto const context = VImageIOTarga::CreateARGBBitmapContext(image->ImageRef());
    ASSERT_TRUE(context && context->DrawImage(*image->ImageRef()));
    unsigned char const argb[] = {0xFF, 0x10, 0x20, 0x30, 0x80, 0x40, 0x00, 0x7F};
    EXPECT_EQ(std::memcmp(context->Row(0), argb, sizeof argb), 0);
    EXPECT_FALSE(VImageIOTarga::CreateARGBBitmapContext(nullptr));
}

TEST_F(Targa, ComesBackDarkerAndUprightOnlyWhenFlipped) {
    ImageRef const image = ImageOf(2, {0x80406080, 0xFFFFFFFF, 0xFF000000, 0x40404040});
    Pixels const darker = {Premultiplied(0x40, 0x60, 0x80, 0x80), 0xFFFEFEFE, 0xFF000000,
                           Premultiplied(0x40, 0x40, 0x40, 0x40)};
    std::string const path = Path("again.tga");
    ASSERT_TRUE(VImageIOTarga(true).SaveImageToFile(*image, VString(path.c_str())));
    ImageRef const upright = Load(path);
    EXPECT_EQ(PixelsOf(*upright), darker);
    EXPECT_TRUE(upright->HasAlpha());
    ASSERT_TRUE(VImageIOTarga().SaveImageToFile(*image, VString(path.c_str())));
    EXPECT_EQ(PixelsOf(*Load(path)), (Pixels{darker[2], darker[3], darker[0], darker[1]}));
}

TEST_F(Targa, SaysWhenItCannotSave) {
    VImageIOTarga const codec;
    VImage const empty;
    EXPECT_FALSE(codec.SaveImageToFile(empty, VString(Path("x.tga").c_str())));
    EXPECT_FALSE(codec.SaveImageToFile(*ImageOf(65536, Pixels(65536)), VString(Path("x.tga").c_str())));
    EXPECT_FALSE(std::filesystem::exists(Path("x.tga")));
    ImageRef const image = ImageOf(3, kSaved);
    EXPECT_FALSE(codec.SaveImageToFile(*image, VString(Path("no/such/folder.tga").c_str())));
    EXPECT_FALSE(codec.SaveImageToFile(*image, VString("/dev/full")));
    auto const extensions = VObjectRef<VObjectArray>::Adopt(codec.SupportedFileExtensions());
    ASSERT_EQ(extensions->Count(), 1);
    EXPECT_TRUE(*static_cast<VString*>(extensions->ObjectAtIndex(0)) == "tga");
}

TEST_F(Targa, ReportsAnyAllocationThatFailsWhileLoading) {
    std::string const path = Write("picture.tga", FileOf({.width = 90, .height = 80}, Ramp(90 * 80 * 4)));
    std::string errors;
    bool loaded = false;
    for (long n = 0; n < 200 && !loaded; ++n) {
        errors += ErrorsOf([&] {
            s_allocationsLeft = n;
            try {
                loaded = static_cast<bool>(Load(path));
            } catch (std::bad_alloc const&) { // before there was a file to load
            }
            s_allocationsLeft = -1;
        });
    }
    EXPECT_TRUE(loaded);
    std::string const failure = "Failed to load image: " + path + "\n";
    for (char const* const cause : {"Caught out of memory exception whilst loading image\n",
                                    "Caught and unknown exception whilst loading image\n"}) {
        EXPECT_NE(errors.find(cause + failure), errors.npos) << cause << "not in\n" << errors;
    }
}

} // namespace
