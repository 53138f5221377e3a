#include "foundation/image/VImageWriter.h"
#include "foundation/image/VImageReader.h"
#include "foundation/strings/VData.h"
#include "tests/image/ImageTestSupport.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/FullDisk.h"

namespace {

using namespace image_test;

struct VImageWriterTest : ImageTest {
    VImageWriter m_writer;
};

TEST_F(VImageWriterTest, KeepsEveryPixel) {
    Pixels all; // each colour at each alpha that it may have
    for (std::uint32_t alpha = 0; alpha < 256; ++alpha) {
        for (std::uint32_t colour = 0; colour < 256; ++colour) {
            std::uint32_t const cut = std::min(colour, alpha);
            all.push_back(alpha << 24 | cut << 16 | cut / 2 << 8 | (alpha - cut));
        }
    }
    Pixels opaque = all;
    for (std::uint32_t& pixel : opaque) {
        pixel |= 0xFF000000;
    }
    Pixels const faint(all.begin() + 0x80 * 256, all.end()); // without a pixel that is wholly transparent
    for (Pixels const& pixels : {all, faint, opaque}) {
        VImage image;
        SetPixels(image, 256, pixels);
        VObjectRef<VData> const file = m_writer.EncodePng(image);
        ASSERT_TRUE(file) << m_writer.ErrorDescription().CString();
        ImageRef const read = VImageReader().ReadData(*file);
        EXPECT_TRUE(PixelsOf(read.Get()) == pixels);
        EXPECT_EQ(read->HasAlpha(), pixels != opaque);
        ASSERT_TRUE(m_writer.WritePng(image, m_scratch.Path()));
        EXPECT_EQ(m_scratch.Bytes(), Bytes(file->Bytes(), file->Bytes() + file->Length()));
        EXPECT_LT(VImageWriter(99).EncodePng(image)->Length(), VImageWriter(-1).EncodePng(image)->Length());
    }
    VImage bright; // colours that no alpha allows
    SetPixels(bright, 2, {0x80FF8100, 0x00FFFFFF});
    EXPECT_EQ(PixelsOf(VImageReader().ReadData(*m_writer.EncodePng(bright)).Get()), (Pixels{0x80808000, 0}));
}

TEST_F(VImageWriterTest, KeepsTheOldFileAndSaysWhy) {
    VImage image;
    EXPECT_FALSE(m_writer.EncodePng(image));
    EXPECT_STREQ(m_writer.ErrorDescription().CString(), "cannot write a picture to memory: it has no pixels");
    Pixels pixels(40'000);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        pixels[i] = 0xFF000000U | static_cast<std::uint32_t>(i * 2654435761U >> 7);
    }
    SetPixels(image, 200, pixels);
    EXPECT_FALSE(m_writer.WritePng(image, "/no/folder/a.png"));
    EXPECT_STREQ(m_writer.ErrorDescription().CString(),
                 "cannot write /no/folder/a.png: No such file or directory");
    m_scratch.SetBytes("old");
    {
        testing_support::FullDisk const full(10'000);
        EXPECT_FALSE(m_writer.WritePng(image, m_scratch.Path()));
        EXPECT_EQ("cannot write " + std::string(m_scratch.Path()) + ": File too large",
                  std::string(m_writer.ErrorDescription().CString()));
    }
    EXPECT_EQ(m_scratch.Bytes(), "old");
    auto const encoded = m_writer.EncodePng(image);
    testing_support::FailEachAllocation([&] {
        bool const isWritten = m_writer.WritePng(image, m_scratch.Path());
        EXPECT_TRUE(isWritten || testing_support::AllocationHasFailed());
        EXPECT_EQ(m_scratch.Bytes() == "old", !isWritten);
        m_scratch.SetBytes("old");
    });
    testing_support::FailEachAllocation([&] {
        VObjectRef<VData> const data = m_writer.EncodePng(image);
        EXPECT_TRUE(data || testing_support::AllocationHasFailed());
        EXPECT_EQ(data ? data->Length() : encoded->Length(), encoded->Length()) << "whole or not at all";
        std::string const reason = m_writer.ErrorDescription().CString();
        EXPECT_TRUE(reason.empty() || reason.find("emory", 33) != reason.npos) << reason;
    });
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_scratch.Folder()), {}), 1);
    EXPECT_TRUE(m_writer.WritePng(image, m_scratch.Path()));
    EXPECT_TRUE(m_writer.ErrorDescription().IsEmpty());
}

} // namespace
