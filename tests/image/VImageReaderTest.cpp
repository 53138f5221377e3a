#include "foundation/image/VImageReader.h"
#include "foundation/image/ImageFileCodec.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/strings/VData.h"
#include "tests/image/ImageTestSupport.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/FailingReads.h"

#include <cstring>

namespace {

using namespace image_test;
using std::string_literals::operator""s;

class VImageReaderTest : public ImageTest {
  protected:
    Pixels FromMemory(Bytes const& bytes) {
        return PixelsOf(m_reader.ReadBytes(bytes.data(), bytes.size()).Get());
    }
    std::string Error() const { return m_reader.ErrorDescription().CString(); }

    VImageReader m_reader;
};

TEST_F(VImageReaderTest, ReadsTheSameFromFilesAndFromMemory) {
    using Format = VImageReader::Format;
    int count = 0;
    for (auto const& entry : std::filesystem::directory_iterator(IMAGE_TEST_DATA)) {
        std::string const path = entry.path();
        Format const format = path.ends_with(".jpg")   ? Format::kJpeg
                              : path.ends_with(".png") ? Format::kPng
                              : path.ends_with(".tga") ? Format::kTarga
                                                       : Format::kNone;
        SCOPED_TRACE(path);
        Bytes const bytes = BytesOf(path);
        m_scratch.SetBytes(bytes); // a name without extension
        ImageRef const image = m_reader.ReadFile(m_scratch.Path());
        EXPECT_EQ(m_reader.PictureFormat(), format);
        if (format == Format::kNone) {
            EXPECT_FALSE(image);
            EXPECT_TRUE(FromMemory(bytes).empty());
            continue;
        }
        ++count;
        ASSERT_TRUE(image) << Error();
        EXPECT_EQ(Error(), "");
        EXPECT_STREQ(image->GetName().CString(), m_scratch.Path());
        Pixels const pixels = PixelsOf(image.Get());
        EXPECT_TRUE(FromMemory(bytes) == pixels);
        EXPECT_EQ(m_reader.PictureFormat(), format);
        EXPECT_EQ(m_reader.Orientation(), path.ends_with("orientation.jpg") ? 6
                                          : path.ends_with("exif.png")      ? 3
                                                                            : 1);
        bool const mayHaveAlpha = format != Format::kJpeg && path.find("colour") == path.npos;
        EXPECT_LE(image->HasAlpha(), mayHaveAlpha);
        auto const byCodec = ImageRef::Adopt(VImage::ImageFromFile(path.c_str()));
        EXPECT_TRUE(PixelsOf(byCodec.Get()) == pixels);
        EXPECT_EQ(byCodec->HasAlpha(), format != Format::kTarga || image->HasAlpha())
            << "always, but of Targa";
    }
    EXPECT_EQ(count, 37);
    EXPECT_EQ(VImage::FindImageInCacheWithName(m_scratch.Path()), nullptr) << "past the cache";
}

TEST_F(VImageReaderTest, SaysWhy) {
    auto const reason = [this](Bytes const& bytes) {
        EXPECT_TRUE(FromMemory(bytes).empty());
        std::string const error = Error();
        std::string const start = "cannot read a picture in memory: ";
        EXPECT_TRUE(error.starts_with(start)) << error;
        return error.substr(std::min(start.size(), error.size()));
    };
    Bytes const png = BytesOf(IMAGE_TEST_DATA "/rgb-8.png");
    Bytes const jpeg = BytesOf(IMAGE_TEST_DATA "/colour-progressive.jpg");
    Bytes const targa = BytesOf(IMAGE_TEST_DATA "/saved.tga");
    EXPECT_EQ(reason(png.substr(0, png.size() - 20)), "the file ends before its picture");
    EXPECT_EQ(reason(jpeg.substr(0, jpeg.size() / 2)), "the file ends before its picture");
    Bytes damaged = png;
    damaged[damaged.find("IDAT") + 8] ^= 1;
    EXPECT_EQ(reason(damaged), "IDAT: CRC error");
    EXPECT_EQ(reason("\xFF\xD8\xFF\xD9"), "JPEG datastream contains no image");
    // 16384 x 4096 pixels in no bytes at all.
    EXPECT_EQ(
        reason("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\100\0\0\0\020\0\010\0\0\0\0\257\166\246\357\0\0\0\0IDAT"s),
        "16384 x 4096 pixels are more than the limits or the length of the file allow");
    damaged = targa;
    damaged[16] = 16;
    EXPECT_EQ(reason(damaged), "a depth of 16 bits is not supported");
    EXPECT_EQ(reason(""), "neither a JPEG nor a PNG nor a Targa picture");
    VImage::SetPixelBudget(5);
    for (Bytes const& large : {png, jpeg, targa}) {
        std::string const text = reason(large);
        EXPECT_TRUE(text.ends_with("pixels are more than the limits or the length of the file allow"))
            << text;
    }
    VImage::SetPixelBudget(VImage::kNoPixelBudget);
    EXPECT_FALSE(m_reader.ReadBytes(nullptr, 100));
    EXPECT_FALSE(m_reader.ReadData(VData()));
    EXPECT_FALSE(m_reader.ReadFile("no/picture"));
    EXPECT_EQ(Error(), "cannot read no/picture: No such file or directory");
    for (char const* const name : {"rgb-8.png", "colour.jpg", "pillow_alpha.tga"}) {
        std::string const path = std::string(IMAGE_TEST_DATA "/") + name;
        testing_support::FailingReads const failing(100, EIO, 26);
        EXPECT_FALSE(m_reader.ReadFile(path));
        EXPECT_EQ(Error(), "cannot read " + path + ": the file could not be read");
    }
    for (char const* const name : {"rgba-8.png", "colour.jpg", "pillow_alpha.tga"}) {
        testing_support::FailEachAllocation([this, name] {
            EXPECT_TRUE(m_reader.ReadFile(std::string(IMAGE_TEST_DATA "/") + name) ||
                        testing_support::AllocationHasFailed());
        });
    }
}

TEST_F(VImageReaderTest, TellsTheOrientationOfAnyExifData) {
    Bytes const jpeg = BytesOf(IMAGE_TEST_DATA "/colour.jpg");
    auto const marker = [](Bytes const& tiff) {
        return "\xFF\xE1\0"s + static_cast<char>(tiff.size() + 8) + "Exif\0\0"s + tiff;
    };
    auto const orientation = [&](Bytes const& tiff, Bytes const& before = "") {
        EXPECT_FALSE(FromMemory(jpeg.substr(0, 2) + before + marker(tiff) + jpeg.substr(2)).empty());
        return m_reader.Orientation();
    };
    Bytes const big = "MM\0\x2A\0\0\0\x0A..\0\2\1\0\0\3\0\0\0\1\0\7\0\0\1\x12\0\3\0\0\0\1\0\5\0\0"s;
    EXPECT_EQ(orientation(big), 5);
    Bytes const little = "II\x2A\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0\x08\0\0\0"s;
    EXPECT_EQ(orientation(little), 8);
    EXPECT_EQ(orientation(little, marker(big)), 5) << "the first one counts";
    EXPECT_TRUE(FromMemory("damaged").empty());
    EXPECT_EQ(m_reader.Orientation(), 1) << "not that of the picture before";
    EXPECT_EQ(orientation(big, "\xFF\xE1\0\x0Ahttp://\0\xFF\xE1\0\2"s), 5) << "other data in such a marker";
    for (std::size_t size = 0; size < big.size() - 2; ++size) { // cut data ends before the value
        EXPECT_EQ(orientation(big.substr(0, size)), 1) << size;
    }
    for (auto const& [at, value] :
         {std::pair{7, '\xFF'}, {4, '\x7F'}, {10, '\xFF'}, {27, '\4'}, {33, '\x9'}}) {
        Bytes changed = big;
        changed[static_cast<std::size_t>(at)] = value;
        EXPECT_EQ(orientation(changed), at == 10 ? 5 : 1) << at; // more entries than there are
    }
}

TEST_F(VImageReaderTest, LogsReasonsOfCodecsWhenAsked) {
    auto const said = [this](char const* name, Bytes const& bytes) {
        std::string const path = Path(name);
        std::ofstream(path) << bytes;
        testing::internal::CaptureStderr();
        EXPECT_EQ(VImage::ImageFromFile(path.c_str()), nullptr);
        std::string text = testing::internal::GetCapturedStderr();
        std::size_t const at = text.find(path);
        return at == text.npos ? text : text.replace(at, path.size(), "*");
    };
    ImageFileCodec::SetLogsReasons(true);
    EXPECT_EQ(said("a.jpg", "\xFF\xD8\xFF\xD9"),
              "Failed to load image with JPG Data provider: JPEG datastream contains no image\n"
              "Failed to load image: *\n");
    EXPECT_EQ(said("a.tga", "anything"),
              "Failed to load image with Targa decoder: the footer of a Targa file is missing\n");
    ImageFileCodec::SetLogsReasons(false);
    EXPECT_EQ(said("a.png", "x"), "Failed to load image with PNG Data providerFailed to load image: *\n");
    EXPECT_EQ(said("b.tga", "anything"), "");
}

} // namespace
