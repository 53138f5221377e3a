#include "foundation/image/VImageIOTarga.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/image/ImageLoadReason.h"
#include "foundation/image/VBitmapContext.h"
#include "tests/image/ImageTestSupport.h"
#include "tests/support/FailingReads.h"
#include "tests/support/FullDisk.h"

#include <cerrno>
#include <cstring>
#include <numeric>

namespace {

using namespace image_test;
using std::string_literals::operator""s;

struct Fields {
    unsigned width = 2;
    unsigned height = 1;
    unsigned depth = 32;
    unsigned idLength = 0;
    unsigned colourMap = 0;
    unsigned imageType = 2;
    unsigned descriptor = 0;
};

Bytes FileOf(Fields const& f, Bytes const& body) {
    Bytes header;
    for (unsigned const byte : {f.idLength, f.colourMap, f.imageType, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U, 0U,
                                f.width, f.width >> 8, f.height, f.height >> 8, f.depth, f.descriptor}) {
        header += static_cast<char>(byte);
    }
    return header + body + "\0\0\0\0\0\0\0\0TRUEVISION-XFILE.\0"s;
}

Bytes Ramp(std::size_t count) {
    Bytes bytes(count, '\0');
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<char>(i * 37 + i / 256 + 255);
    }
    return bytes;
}

std::uint32_t Premultiplied(unsigned red, unsigned green, unsigned blue, unsigned alpha) {
    return alpha << 24 | red * alpha / 256 << 16 | green * alpha / 256 << 8 | blue * alpha / 256;
}

/// The pixel of 1, 3 or 4 bytes at `at`.
std::uint32_t PixelAt(Bytes const& bytes, std::size_t at, unsigned depth) {
    auto const byte = [&bytes, at](std::size_t i) { return static_cast<unsigned>(bytes[at + i]) & 0xFF; };
    return depth == 8    ? 0xFF000000U | byte(0) * 0x010101U
           : depth == 24 ? 0xFF000000U | byte(2) << 16 | byte(1) << 8 | byte(0)
                         : Premultiplied(byte(2), byte(1), byte(0), byte(3));
}

class VImageIOTargaTest : public ImageTest {
  protected:
    VImageIOTargaTest() { VImage::ms_cacheEnabled = false; }

    /// The pixels of the file; none when it is refused. fuzz.targa decodes from memory too, and compares.
    Pixels Decode(Bytes const& file, bool* hasAlpha = nullptr) const {
        m_scratch.SetBytes(file);
        auto const image = ImageRef::Adopt(VImageIOTarga().LoadImageFromFile(m_scratch.Path()));
        if (hasAlpha) {
            *hasAlpha = image && image->HasAlpha();
        }
        return PixelsOf(image.Get());
    }
};

TEST_F(VImageIOTargaTest, ReadsEveryDepthFromTheBottomRow) {
    for (Fields fields : {Fields{.width = 1},
                          {.width = 7, .height = 3},
                          {.width = 301, .height = 299},
                          {.width = 65535, .height = 2}}) { // within a block of rows and beyond
        for (unsigned const depth : {8U, 24U, 32U}) {
            fields.depth = depth;
            Bytes const body = Ramp(std::size_t{fields.width} * fields.height * depth / 8);
            Pixels expected;
            for (unsigned y = fields.height; y-- > 0;) {
                for (unsigned x = 0; x < fields.width; ++x) {
                    expected.push_back(PixelAt(body, (std::size_t{y} * fields.width + x) * depth / 8, depth));
                }
            }
            bool hasAlpha = false;
            EXPECT_TRUE(Decode(FileOf(fields, body), &hasAlpha) == expected)
                << fields.width << " at " << depth;
            EXPECT_EQ(hasAlpha, depth == 32);
        }
    }
    Bytes const body = "\xFF\xFF\xFF\xFF\xFF\x80\x01\x80\x10\x20\x30\0"s;
    EXPECT_EQ(Decode(FileOf({.width = 3}, body)), (Pixels{0xFFFEFEFE, 0x8000407F, 0}));
}

TEST_F(VImageIOTargaTest, FindsThePixelsByIdLengthAndColourMap) {
    Bytes const body = "\1\2\3\xFF\5\6\7\xFF";
    Pixels const expected = {PixelAt(body, 0, 32), PixelAt(body, 4, 32)};
    EXPECT_EQ(Decode(FileOf({.idLength = 5}, "12345" + body)), expected);
    EXPECT_EQ(Decode(FileOf({.imageType = 10}, body)), expected);
    // With a colour map the pixels are looked for 18 bytes earlier, in the header if need be.
    EXPECT_EQ(Decode(FileOf({.idLength = 18, .colourMap = 1}, body)), expected);
    EXPECT_EQ(Decode(FileOf({.depth = 8, .colourMap = 1}, "")), (Pixels{0xFF000000, 0xFF010101}));
    // 255 is -1: the header's last byte comes first. A start before the file is refused.
    EXPECT_EQ(Decode(FileOf({.depth = 8, .idLength = 255}, "\x9")), (Pixels{0xFF000000, 0xFF090909}));
    EXPECT_TRUE(Decode(FileOf({.depth = 8, .idLength = 255, .colourMap = 1}, body)).empty());
    EXPECT_TRUE(Decode(FileOf({.depth = 8, .idLength = 128}, body)).empty());
}

TEST_F(VImageIOTargaTest, RefusesWhatItCannotRead) {
    for (unsigned const depth : {0U, 1U, 7U, 9U, 16U, 33U, 255U}) {
        EXPECT_TRUE(Decode(FileOf({.depth = depth}, Ramp(100))).empty()) << depth;
    }
    for (unsigned const depth : {8U, 24U, 32U}) {
        EXPECT_TRUE(Decode(FileOf({.width = 65535, .height = 65535, .depth = depth}, "")).empty());
        EXPECT_TRUE(Decode(FileOf({.width = 0, .depth = depth}, Ramp(100))).empty());
    }
    Bytes const whole = FileOf({}, Ramp(8));
    EXPECT_TRUE(Decode(FileOf({}, Ramp(7))).empty());
    for (std::size_t i = 0; i < whole.size(); ++i) {
        EXPECT_TRUE(Decode(whole.substr(0, i)).empty()) << i;
        Bytes changed = whole;
        changed[i] = '\xFF';
        bool const isSignature = i >= whole.size() - 18 && i < whole.size() - 2;
        EXPECT_TRUE(Decode(changed).empty() || !isSignature) << i;
    }
    VImage::SetPixelBudget(2);
    EXPECT_EQ(Decode(whole).size(), 2U);
    VImage::SetPixelBudget(1);
    EXPECT_TRUE(Decode(whole).empty());
    VImage::SetPixelBudget(VImage::kNoPixelBudget);
}

TEST_F(VImageIOTargaTest, TellsAFailedReadFromAShorterFile) {
    m_scratch.SetBytes(FileOf({.width = 300, .height = 300, .depth = 8}, Bytes(90'000, 'x')));
    Pixels const whole = Load(VImageIOTarga(), m_scratch.Path());
    {
        // The last bytes, the top rows, went after the footer was read.
        testing_support::FailingReads const shrinking(50'018, 0, 20'000);
        Pixels const shorter = Load(VImageIOTarga(), m_scratch.Path());
        ASSERT_EQ(shorter.size(), whole.size());
        EXPECT_EQ(shorter[40'100], 0xFF000000);
        EXPECT_EQ(shorter[40'099], whole[40'099]);
    }
    testing_support::FailingReads const failing(50'018, EIO, 20'000);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(Load(VImageIOTarga(), m_scratch.Path()).empty());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Failed to load image: " + std::string(m_scratch.Path()) + "\n");
}

TEST_F(VImageIOTargaTest, ReadsFilesOfOtherPrograms) {
    for (auto const& [name, depth] : {std::pair{"grey", 8U}, {"colour", 24U}, {"alpha", 32U}}) {
        Pixels expected;
        for (unsigned i = 0; i < 7 * 13; ++i) {
            unsigned const x = i % 13;
            unsigned const y = i / 13;
            Bytes pixel;
            for (unsigned const channel : {x * 7 + y * 11, y * 35, x * 20, x * 40 + y * 3}) {
                pixel += static_cast<char>(channel);
            }
            expected.push_back(PixelAt(pixel, depth == 8 ? 2 : 0, depth));
        }
        std::string const path = std::string(IMAGE_TEST_DATA "/pillow_") + name + ".tga";
        EXPECT_EQ(Load(VImageIOTarga(), path.c_str()), expected) << name;
    }
}

TEST_F(VImageIOTargaTest, SavesTheBytesOfTheFormat) {
    Pixels const pixels = {0xFF102030, 0x8040007F, 0x00000000, 0xFFFFFFFF, 0xFE010203, 0x01010001};
    VImage image;
    SetPixels(image, 3, pixels);
    Bytes const top("\x30\x20\x10\xFF\x7F\x00\x40\x80\x00\x00\x00\x00", 12);
    Bytes const bottom("\xFF\xFF\xFF\xFF\x03\x02\x01\xFE\x01\x00\x01\x01", 12);
    Fields const fields{.width = 3, .height = 2, .descriptor = 8};
    VString const path(m_scratch.Path());
    EXPECT_TRUE(VImageIOTarga().SaveImageToFile(image, path));
    EXPECT_EQ(m_scratch.Bytes(), FileOf(fields, top + bottom));
    EXPECT_TRUE(VImageIOTarga(true).SaveImageFromPixelData(image, path, false));
    EXPECT_EQ(m_scratch.Bytes(), BytesOf(IMAGE_TEST_DATA "/saved.tga"));
    EXPECT_TRUE(VImageIOTarga(true, VImageIOTarga::Saving::kReplacing).SaveImageToFile(image, path));
    EXPECT_EQ(m_scratch.Bytes(), FileOf(fields, bottom + top));
    // Upright only when flipped, and multiplied by alpha once more.
    EXPECT_EQ(Load(VImageIOTarga(), path.CString()),
              (Pixels{0xFF0F1F2F, 0x8020003F, 0, 0xFFFEFEFE, 0xFE000102, 0x01000000}));

    // Rows with padding between them.
    Pixels const padded = {pixels[0], pixels[1], pixels[2], 1, 2, pixels[3], pixels[4], pixels[5]};
    image.SetImageRef(VBitmapImage::Create(3, 2, 20, nullptr, padded.data(), 40, nullptr));
    EXPECT_TRUE(VImageIOTarga().SaveImageToFile(image, path));
    EXPECT_EQ(m_scratch.Bytes(), FileOf(fields, top + bottom));

    // More than is written at a time.
    Pixels large(40'000);
    std::iota(large.begin(), large.end(), 0xFE000000U);
    SetPixels(image, 200, large);
    EXPECT_TRUE(VImageIOTarga(true).SaveImageToFile(image, path));
    Bytes const saved = m_scratch.Bytes();
    for (std::size_t y = 0; y < 200; ++y) {
        EXPECT_EQ(std::memcmp(&saved[18 + 800 * y], &large[200 * (199 - y)], 800), 0) << y;
    }

    SetPixels(image, 3, pixels);
    auto const context = VImageIOTarga::CreateARGBBitmapContext(image.ImageRef());
    ASSERT_TRUE(context);
    EXPECT_TRUE(context->DrawImage(*image.ImageRef()));
    EXPECT_EQ(std::memcmp(context->Row(0), "\xFF\x10\x20\x30\x80\x40\x00\x7F", 8), 0);
    EXPECT_FALSE(VImageIOTarga::CreateARGBBitmapContext(nullptr));
    auto const extensions = VObjectRef<VObjectArray>::Adopt(VImageIOTarga().SupportedFileExtensions());
    EXPECT_TRUE(*static_cast<VString*>(extensions->ObjectAtIndex(0)) == "tga");
}

TEST_F(VImageIOTargaTest, SaysWhyItCannotSave) {
    using Saving = VImageIOTarga::Saving;
    VImage image;
    ImageLoadReason const reason;
    auto const reasonOf = [&](char const* path, Saving saving) {
        EXPECT_FALSE(VImageIOTarga(false, saving).SaveImageToFile(image, path)) << path;
        std::string const text = reason.ErrorDescription().StdString();
        std::string const start = std::string("cannot save ") + path + ": ";
        EXPECT_TRUE(text.starts_with(start)) << text;
        return text.substr(std::min(start.size(), text.size()));
    };
    Pixels const wide(65536);
    EXPECT_EQ(reasonOf(m_scratch.Path(), Saving::kInPlace), "it has no pixels");
    SetPixels(image, 65536, wide);
    EXPECT_EQ(reasonOf(m_scratch.Path(), Saving::kInPlace), "a side is longer than 65535 pixels");
    EXPECT_FALSE(std::filesystem::exists(m_scratch.Path()));
    for (unsigned const width : {1U, 256U}) { // the first is written only when the file is closed
        SetPixels(image, width, Pixels(width * width));
        for (auto const saving : {Saving::kInPlace, Saving::kReplacing}) {
            EXPECT_EQ(reasonOf("/no/folder.tga", saving), "No such file or directory");
            EXPECT_EQ(reasonOf("/dev/full", saving), "No space left on device");
        }
    }
    for (auto const saving : {Saving::kInPlace, Saving::kReplacing}) {
        testing_support::FullDisk const full(100'000);
        EXPECT_EQ(reasonOf(m_scratch.Path(), saving), "File too large");
    }
}

TEST_F(VImageIOTargaTest, LosesNoFileWhenItReplacesIt) {
    VImage image;
    Pixels const pixels(65536);
    SetPixels(image, 256, pixels);
    ASSERT_TRUE(VImageIOTarga().SaveImageToFile(image, m_scratch.Path()));
    Bytes const before = m_scratch.Bytes();
    for (auto const saving : {VImageIOTarga::Saving::kReplacing, VImageIOTarga::Saving::kInPlace}) {
        testing_support::FullDisk const full(100'000);
        EXPECT_FALSE(VImageIOTarga(true, saving).SaveImageToFile(image, m_scratch.Path()));
        EXPECT_EQ(m_scratch.Bytes() == before, saving == VImageIOTarga::Saving::kReplacing);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_scratch.Folder()), {}), 1)
        << "no temporary file is left";
}

} // namespace
