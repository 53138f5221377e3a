#include "foundation/persistence/VArchive.h"

#include "foundation/core/VException.h"
#include "foundation/strings/VString.h"
#include "tests/persistence/ChunkBytes.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/ScratchFile.h"

namespace {

using namespace VFoundation;
using namespace testing_support;

std::string Array(std::string const& elements, std::uint32_t count = 1) {
    return Chunk("ARAY", BE32(count) + elements);
}
std::string Contents(std::string const& bytes) {
    return Chunk("elem", BE32(0) + BE32(static_cast<std::uint32_t>(bytes.size())) + bytes);
}
std::string Data(std::string const& bytes) {
    return Chunk("Data", Array(Contents(bytes)));
}

class Archive : public testing::Test {
  protected:
    Archive() { m_archive.Data().AddObject(VObjectRef<VData>::Adopt(new VData(5)).Get()); }

    /// Loads from a file that ends with the chunk "NEXT"; returns the contents, each after a comma, and the
    /// id of what follows.
    std::string Load(std::string const& bytes) {
        m_scratch.SetBytes(bytes + Chunk("NEXT", ""));
        EXPECT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead | VAIFile::kChunkSafe));
        EXPECT_TRUE(m_archive.Serialize(m_file));
        return Loaded();
    }
    std::string Loaded() {
        std::string list;
        for (long i = 0; i < m_archive.Data().Count(); ++i) {
            VData const& data = *m_archive.Data().ObjectAtIndexTyped(i);
            list += "," + std::string(reinterpret_cast<char const*>(data.Bytes()), data.Length());
        }
        unsigned long id = 0;
        m_file.ReadChunkHeader(&id, nullptr);
        return list + " " + BE32(static_cast<std::uint32_t>(id));
    }

    ScratchFile const m_scratch;
    VAIFile m_file;
    VArchive m_archive;
};

TEST_F(Archive, TakesTheElementsThatAreThere) {
    std::string const mixed = Contents("a") + Chunk("junk", "x") + Contents("") + Contents("ccc");
    std::string const info = Chunk("elem", std::string("\0\2n\0\1", 5));
    EXPECT_EQ(Load(Chunk("VArc", Chunk("Data", Array(mixed, 5)) + Chunk("what", "ever") +
                                     Chunk("Info", Array(info, 0xFFFFFFFF)))),
              ",a,,ccc NEXT");
    ASSERT_EQ(m_archive.Infos().Count(), 1);
    EXPECT_STREQ(m_archive.Infos().ObjectAtIndexTyped(0)->Path(), "n");
    EXPECT_EQ(m_file.Report()->AsText(), "53: wrong kind (junk)\n89: count differs (5, found 3)\n"
                                         "97: wrong kind (what)\n134: count differs (-1, found 1)\n");
    EXPECT_STREQ(m_archive.ErrorDescription().CString(), "53: wrong kind (junk)");
    EXPECT_EQ(Load(Chunk("VArc", Data("old") + Data("new"))), ",new NEXT") << "the last list wins";
    EXPECT_STREQ(m_archive.ErrorDescription().CString(), "86: not read (Info)") << "of this archive";
    for (std::string const& none : {Chunk("Varc", Data("a")), Chunk("VArc", ""), Chunk("VArc", "short"),
                                    Chunk("VArc", Chunk("Data", Chunk("LIST", "no array")))}) {
        EXPECT_EQ(Load(none), " NEXT") << none;
        EXPECT_FALSE(m_archive.ErrorDescription().IsEmpty()) << none;
    }
    Load(Chunk("VArc", "short") + Chunk("VArc", ""));
    m_file.UnreadHeader();
    EXPECT_TRUE(m_archive.Serialize(m_file));
    EXPECT_STREQ(m_archive.ErrorDescription().CString(), "21: not read (Info)") << "not of the one before it";
}

TEST_F(Archive, SkipsNullsAndReportsWhatItCannotStore) {
    m_archive.Data().AddObject(nullptr);
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite));
    EXPECT_TRUE(m_archive.Serialize(m_file));
    EXPECT_TRUE(m_file.Close());
    EXPECT_EQ(m_scratch.Bytes(), Chunk("VArc", Chunk("Info", Array("", 0)) +
                                                   Chunk("Data", Array(Contents(std::string(5, '\0')), 2))));

    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite));
    for (int depth = 0; depth < 13; ++depth) {
        m_file.OpenChunk("DEEP");
    }
    EXPECT_FALSE(m_archive.Serialize(m_file)) << "its elements would be the seventeenth level";
    int depth = 0;
    for (; m_file.CloseChunk(); ++depth) {
    }
    EXPECT_EQ(depth, 13) << "it closed what it opened";
    ASSERT_TRUE(m_file.Open("/dev/full", VAIFile::kWrite));
    EXPECT_FALSE(m_archive.Serialize(m_file));
    EXPECT_STREQ(m_archive.ErrorDescription().CString(),
                 "cannot write /dev/full at offset 0: No space left on device");
}

TEST_F(Archive, ClosesItsChunksWhenALengthCannotBeTrue) {
    std::string const tooLong = Chunk("elem", BE32(0) + BE32(0xFFFFFFFF) + "abc");
    testing::internal::CaptureStderr();
    EXPECT_THROW(
        Load(Chunk("VArc", Chunk("Data", Array(Contents("fine") + tooLong, 2)) + Chunk("more", "x"))),
        VException);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(Loaded(), ",fine NEXT") << "what came before is kept";
    EXPECT_STREQ(m_archive.ErrorDescription().CString(), "64: not read (a length beyond the end)");
}

TEST_F(Archive, LeavesNoChunkOpenWhenMemoryRunsOut) {
    std::string const info = Chunk("elem", std::string("\0\2n\0\1", 5));
    std::string const bytes = Chunk("VArc", Chunk("Info", Array(info)) + Data("abc"));
    m_scratch.SetBytes(bytes);
    FailEachAllocation([&] {
        VArchive archive;
        VAIFile file;
        if (!file.Open(m_scratch.Path(), VAIFile::kRead | VAIFile::kChunkSafe)) {
            EXPECT_TRUE(AllocationHasFailed());
            EXPECT_EQ(file.GetLastError(), VAIFile::eCannotOpen);
            return;
        }
        try {
            archive.Serialize(file);
        } catch (...) {
            EXPECT_EQ(file.GetPos(), static_cast<long>(bytes.size()));
            throw;
        }
    });
}

} // namespace
