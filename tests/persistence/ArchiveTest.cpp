#include "foundation/persistence/VArchive.h"

#include "foundation/core/VException.h"
#include "foundation/persistence/VAIFile.h"
#include "tests/persistence/ChunkBytes.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace VFoundation;
using testing_support::BE32;
using testing_support::Chunk;
using testing_support::ScratchFile;

class Archive : public testing::Test {
  protected:
    /// Loads an archive from a file that ends with the chunk "NEXT"; the archive was not empty before.
    void Load(std::string const& bytes) {
        m_scratch.SetBytes(bytes + Chunk("NEXT", ""));
        ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead | VAIFile::kChunkSafe));
        AddData(m_archive);
        EXPECT_TRUE(m_archive.Serialize(m_file));
    }
    /// True when reading went on exactly behind the archive.
    bool IsNextChunkThere() {
        unsigned long id = 0;
        return m_file.ReadChunkHeader(&id, nullptr) && id == ChunkId("NEXT");
    }
    static void AddData(VArchive& archive) {
        auto const data = VObjectRef<VData>::Adopt(new VData(5));
        archive.Data().AddObject(data.Get());
    }
    static std::string Array(std::string const& elements, std::uint32_t count) {
        return Chunk("ARAY", BE32(count) + elements);
    }
    static std::string Contents(std::string const& bytes) {
        return Chunk("elem", BE32(0) + BE32(static_cast<std::uint32_t>(bytes.size())) + bytes);
    }
    static std::string Info(std::string const& name) {
        return Chunk("elem", std::string(1, '\0') + static_cast<char>(name.size() + 1) + name + '\0' + '\1');
    }
    std::string DataText(long index) {
        VData const& data = *m_archive.Data().ObjectAtIndexTyped(index);
        return {reinterpret_cast<char const*>(data.Bytes()), data.Length()};
    }

    ScratchFile const m_scratch;
    VAIFile m_file;
    VArchive m_archive;
};

TEST_F(Archive, IsFortyEightBytesWhenEmpty) {
    std::string const empty = Chunk("VArc", Chunk("Info", Array("", 0)) + Chunk("Data", Array("", 0)));
    for (long const flags : {0L, VAIFile::kPadChunks}) {
        ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite | flags));
        EXPECT_TRUE(m_archive.Serialize(m_file));
        EXPECT_TRUE(m_file.Close());
        EXPECT_EQ(m_scratch.Bytes(), empty);
        EXPECT_EQ(empty.size(), 48U);
    }
}

TEST_F(Archive, BelievesElementsAndNotCounts) {
    Load(Chunk("VArc",
               Chunk("Data", Array(Contents("a") + Chunk("junk", "x") + Contents("") + Contents("ccc"), 5)) +
                   Chunk("what", "ever") + Chunk("Info", Array(Info("n"), 0xFFFFFFFF))));
    ASSERT_EQ(m_archive.Data().Count(), 3);
    EXPECT_EQ(DataText(0) + "," + DataText(1) + "," + DataText(2), "a,,ccc");
    ASSERT_EQ(m_archive.Infos().Count(), 1);
    EXPECT_STREQ(m_archive.Infos().ObjectAtIndexTyped(0)->Path(), "n");
    EXPECT_TRUE(m_archive.Infos().ObjectAtIndexTyped(0)->Flag());
    EXPECT_TRUE(IsNextChunkThere());
}

TEST_F(Archive, LetsTheLastListWin) {
    Load(Chunk("VArc", Chunk("Data", Array(Contents("old"), 1)) + Chunk("Data", Array(Contents("new"), 1)) +
                           Chunk("Info", Array(Info("n"), 1)) + Chunk("Info", Chunk("LIST", "no array"))));
    ASSERT_EQ(m_archive.Data().Count(), 1);
    EXPECT_EQ(DataText(0), "new");
    EXPECT_EQ(m_archive.Infos().Count(), 0);
    EXPECT_TRUE(IsNextChunkThere());
}

TEST_F(Archive, IsEmptyWhenTheFileHoldsNone) {
    for (std::string const& bytes :
         {Chunk("Varc", Chunk("Data", Array(Contents("a"), 1))), Chunk("VArc", ""), Chunk("VArc", "short")}) {
        Load(bytes);
        EXPECT_EQ(m_archive.Data().Count(), 0);
        EXPECT_TRUE(IsNextChunkThere()) << bytes;
    }
}

TEST_F(Archive, SkipsNullsAndReportsWhatItCannotStore) {
    AddData(m_archive);
    m_archive.Data().AddObject(nullptr);
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite));
    EXPECT_TRUE(m_archive.Serialize(m_file));
    m_file.Close();
    EXPECT_EQ(m_scratch.Bytes(), Chunk("VArc", Chunk("Info", Array("", 0)) +
                                                   Chunk("Data", Array(Contents(std::string(5, '\0')), 2))));

    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite));
    for (int depth = 0; depth < 13; ++depth) {
        m_file.OpenChunk("DEEP");
    }
    EXPECT_FALSE(m_archive.Serialize(m_file)) << "its elements would be the seventeenth level";
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNone) << "every chunk that was opened is closed";
    for (int depth = 0; depth < 13; ++depth) {
        EXPECT_TRUE(m_file.CloseChunk());
    }
    EXPECT_FALSE(m_file.CloseChunk());
    ASSERT_TRUE(m_file.Open("/dev/full", VAIFile::kWrite));
    EXPECT_FALSE(m_archive.Serialize(m_file));
}

TEST_F(Archive, ClosesItsChunksWhenALengthCannotBeTrue) {
    std::string const tooLong = Chunk("elem", BE32(0) + BE32(0xFFFFFFFF) + "abc");
    testing::internal::CaptureStderr();
    EXPECT_THROW(
        Load(Chunk("VArc", Chunk("Data", Array(Contents("fine") + tooLong, 2)) + Chunk("more", "x"))),
        VException);
    testing::internal::GetCapturedStderr();
    EXPECT_TRUE(IsNextChunkThere());
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(m_file.ChunkRemaining(), 0U);
    ASSERT_EQ(m_archive.Data().Count(), 1) << "what came before is kept";
    EXPECT_EQ(DataText(0), "fine");
}

} // namespace
