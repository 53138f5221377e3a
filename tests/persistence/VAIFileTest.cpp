#include "foundation/persistence/VAIFile.h"

#include "foundation/strings/VString.h"
#include "foundation/strings/values/VValue.h"
#include "tests/persistence/ChunkBytes.h"
#include "tests/support/FailingReads.h"
#include "tests/support/FullDisk.h"
#include "tests/support/LineLog.h"
#include "tests/support/ScratchFile.h"

#include <algorithm>
#include <cmath>
#include <fcntl.h>
#include <numeric>
#include <sys/stat.h>
#include <tuple>
#include <unistd.h>
#include <vector>

namespace {

using namespace VFoundation;
using namespace testing_support;

constexpr long kRead = VAIFile::kRead;
constexpr long kWrite = VAIFile::kWrite;
constexpr long kSafe = kRead | VAIFile::kChunkSafe;

class AIFile : public testing::Test {
  protected:
    void OpenOn(std::string const& bytes, long mode = kSafe) {
        m_scratch.SetBytes(bytes);
        Open(mode);
    }
    void Open(long mode) { ASSERT_TRUE(m_file.Open(m_scratch.Path(), mode)); }
    template <class T>
    T Read(T before) {
        m_file >> before;
        return before;
    }
    /// Enters chunks inside each other; their ids, as far as there are chunks.
    std::string Enter(int count = 1) {
        std::string ids;
        for (unsigned long id = 0; count > 0 && m_file.ReadChunkHeader(&id, nullptr); --count) {
            ids += BE32(static_cast<std::uint32_t>(id));
        }
        return ids;
    }
    std::string Described() const { return m_file.ErrorDescription().CString(); }
    /// Position and what is left of the chunk.
    std::string State() {
        return std::to_string(m_file.GetPos()) + " " + std::to_string(m_file.ChunkRemaining());
    }

    ScratchFile const m_scratch;
    VAIFile m_file;
};

TEST_F(AIFile, ChangesItsOrderWhereItStands) {
    std::uint32_t number = 0x01020304;
    Open(kWrite);
    m_file << 0x01020304;
    m_file.SetLE(true);
    m_file << 0x5566778801020304L << std::nan("");
    EXPECT_TRUE(m_file.Write32BitBE(&number));
    EXPECT_TRUE(m_file.Write("\x80", 1));
    EXPECT_TRUE(m_file.Close());
    EXPECT_EQ(m_scratch.Bytes().substr(0, 8), "\1\2\3\4\4\3\2\1") << "a long keeps its low half";
    Open(kRead | VAIFile::kLittleEndian);
    m_file.Seek(8, VFile::kFromStart);
    EXPECT_TRUE(std::isnan(Read(0.0)));
    EXPECT_TRUE(m_file.Read32BitBE(&number));
    EXPECT_EQ(number, 0x01020304U);
    EXPECT_TRUE(Read(false)) << "any byte but 0 is true";
}

TEST_F(AIFile, PadsByOffsetWhenWritingAndByLengthWhenReading) {
    Open(kWrite | VAIFile::kPadChunks);
    m_file << 'x'; // the chunk starts at an odd offset, so its odd body ends at an even one
    EXPECT_TRUE(m_file.OpenChunk(0x6F646400UL));
    EXPECT_EQ(m_scratch.Bytes().size(), 9U) << "opening a chunk writes it out";
    EXPECT_TRUE(m_file.Write("y", 1));
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_TRUE(m_file.Close());
    EXPECT_EQ(m_scratch.Bytes(), std::string("xodd\0\0\0\0\1y", 10));
    Open(kRead | VAIFile::kPadChunks);
    EXPECT_EQ(Read(' '), 'x');
    EXPECT_EQ(Enter(), "odd" + std::string(1, '\0'));
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(m_file.GetPos(), 11) << "one byte off: the length is odd";
    OpenOn(Chunk("ODDS", "y"), kRead | VAIFile::kPadChunks);
    EXPECT_EQ(Enter(), "ODDS");
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(m_file.GetPos(), 10);
}

TEST_F(AIFile, NestsSixteenDeep) {
    Open(kWrite);
    std::string expected;
    while (m_file.OpenChunk("DEEP")) {
        expected = Chunk("DEEP", expected);
    }
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eTooDeep);
    while (m_file.CloseChunk()) {
    }
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNoChunk);
    EXPECT_EQ(m_scratch.Bytes(), expected);
    OpenOn(Chunk("DEEP", 'x' + expected));
    Enter();
    EXPECT_EQ(Read(' '), 'x');
    Enter(16);
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eTooDeep);
    EXPECT_EQ(State(), "129 8") << "a refused header consumes nothing";
    EXPECT_EQ(m_file.GetChunkLength(), 0U);
    EXPECT_FALSE(m_file.CloseChunk()) << "the error stands";
    EXPECT_EQ(State(), "137 0");
}

TEST_F(AIFile, SkipsWhatIsLeftAndCountsForTheParent) {
    OpenOn(Chunk("OUTR", Chunk("KID1", "abc") + '\0' + Chunk("KID2", "ab")) + Chunk("NEXT", ""),
           kSafe | VAIFile::kPadChunks);
    EXPECT_EQ(Enter(2), "OUTRKID1");
    EXPECT_EQ(Read(' '), 'a');
    EXPECT_EQ(State(), "17 2");
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(State(), "20 10");
    EXPECT_EQ(m_file.GetChunkLength(), 3U) << "of the chunk last read at the next level";
    EXPECT_EQ(Enter(), "KID2");
    m_file.UnreadHeader();
    EXPECT_EQ(State(), "20 10");
    EXPECT_EQ(Enter(), "KID2");
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(m_file.ChunkRemaining(), 0U);
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(Enter(), "NEXT");
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(Enter(), "");
    EXPECT_TRUE(m_file.Eof());
}

TEST_F(AIFile, StopsAtTheEndOfAChunkWhenChunkSafe) {
    OpenOn(Chunk("TWOB", "ab") + Chunk("STRS", std::string("\0\0\0\xFFxyz", 7)) + "more");
    Enter();
    EXPECT_EQ(Read(7), 0);
    EXPECT_EQ(Read(7.0), 0);
    EXPECT_TRUE(ReadString(m_file).empty());
    EXPECT_EQ(State(), "8 2") << "nothing was consumed";
    std::string bytes = "xxxxx";
    EXPECT_TRUE(m_file.Read(bytes.data(), 4));
    EXPECT_EQ(bytes, std::string("ab\0\0x", 5));
    EXPECT_FALSE(m_file.Read(bytes.data(), 1)) << "nothing was there";
    EXPECT_TRUE(m_file.Read(bytes.data(), 0));
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(Enter(), "STRS");
    EXPECT_EQ(ReadString(m_file), "");
    EXPECT_EQ(ReadString(m_file), "xyz") << "no more than the chunk holds";
    EXPECT_EQ(State(), "25 0");
}

TEST_F(AIFile, ReadsSixtyFourBitsWhateverTheChunkHolds) {
    OpenOn(Chunk("TWOB", "\1\2") + "\3\4\5\6\7\x08");
    Enter();
    EXPECT_EQ(Read(0LL), 0x0102030405060708LL);
    EXPECT_EQ(m_file.ChunkRemaining(), 0U);
}

TEST_F(AIFile, ReadsASignedShortOnlyInsideChunks) {
    for (long const mode : {kSafe, kRead}) {
        OpenOn("\1\2" + Chunk("SHRT", "\3\4"), mode);
        EXPECT_EQ(Read(short{7}), 0);
        EXPECT_EQ(m_file.GetPos(), 0);
        EXPECT_EQ(Read(static_cast<unsigned short>(7)), mode == kSafe ? 0 : 0x0102);
        EXPECT_EQ(Read(short{7}), 0) << "nor what is in memory already";
        m_file.Seek(2, VFile::kFromStart);
        Enter();
        EXPECT_EQ(Read(short{7}), 0x0304);
    }
}

TEST_F(AIFile, CountsNothingWithoutChunkSafety) {
    OpenOn(Chunk("OUTR", Chunk("KID1", "abcd") + "wxyz") + "0123456789", kRead);
    Enter(2);
    EXPECT_EQ(Read(0), 0x61626364);
    EXPECT_EQ(State(), "20 4");
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(State(), "24 4") << "skipped from after the value; the child counts all the same";
    m_file.Seek(-2, VFile::kFromEnd);
    EXPECT_EQ(Read(7), 7) << "left alone where the file ends";
    EXPECT_TRUE(m_file.Eof());
    std::string bytes = "xxxx";
    m_file.Seek(-1, VFile::kFromCurrent);
    EXPECT_FALSE(m_file.Eof());
    EXPECT_FALSE(m_file.Read(bytes.data(), 4));
    EXPECT_EQ(bytes, "9xxx");
}

TEST_F(AIFile, EndsEveryLoopOnADamagedLength) {
    std::string const tooLong = ChunkClaiming("LONG", 0xFFFFFFFF, "");
    std::tuple<std::string, char const*, char const*, char const*> const cases[] = {
        {Chunk("OUTR", tooLong), "OUTRLONG", "16 4294967295", "4294967312 0"}, // longer than its parent
        {Chunk("OUTR", "123456") + Chunk("NEXT", ""), "OUTR", "8 6", "14 0"},  // no room for a header
        {ChunkClaiming("OUTR", 100, "KID1\1\2\3"), "OUTR", "15 0", "15 0"},    // the end of the file cuts it
    };
    for (auto const& [bytes, ids, state, closed] : cases) {
        OpenOn(bytes, kSafe | VAIFile::kPadChunks);
        EXPECT_EQ(Enter(2), ids);
        EXPECT_EQ(State(), state);
        m_file.CloseChunk();
        EXPECT_EQ(State(), closed) << ids;
    }
    OpenOn(tooLong + "abcd");
    Enter();
    long reads = 0;
    for (; m_file.ChunkRemaining() && reads < 100; ++reads) {
        Read(' ');
    }
    EXPECT_EQ(reads, 5);
}

TEST_F(AIFile, MovesAroundAndIsAFile) {
    Open(kWrite);
    VFile& asFile = m_file;
    m_file << std::string(70'000, 's').c_str();
    EXPECT_TRUE(m_file.Seek(2, 1));
    EXPECT_TRUE(m_file.Write("ab", 2));
    EXPECT_TRUE(m_file.Seek(0, 2));
    EXPECT_TRUE(m_file.Write("c", 1));
    EXPECT_EQ(m_file.GetFileLength(), 2 + VAIFile::kMaxTextLength + 2) << "the text is cut";
    Open(kRead);
    EXPECT_EQ(ReadString(m_file), "ab" + std::string(VAIFile::kMaxTextLength - 2, 's'));
    EXPECT_TRUE(m_file.Seek(-3, 2));
    EXPECT_TRUE(m_file.Seek(1, 0));
    EXPECT_TRUE(m_file.Seek(1, 7));
    EXPECT_TRUE(asFile.FileSeek(-70'000, 0));
    EXPECT_EQ(asFile.GetLengthRemaining(), 2);
    EXPECT_EQ(asFile.GetPosition(), m_file.GetPos());
    EXPECT_TRUE(m_file.Seek(5, 2));
    EXPECT_EQ(m_file.GetFileRemaining(), 0U);
    EXPECT_EQ(Read('z'), 'z');
    EXPECT_TRUE(asFile.IsEndOfFile());
}

TEST_F(AIFile, SaysWhyItDoesNotOpen) {
    std::string const fifo = (m_scratch.Folder() / "fifo").string();
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    auto const errorOf = [&](char const* path, long mode) {
        EXPECT_FALSE(m_file.Open(path, mode));
        EXPECT_FALSE(m_file.IsLoading());
        EXPECT_FALSE(m_file.IsStoring());
        EXPECT_EQ(m_file.GetPosition() + m_file.GetLengthRemaining(), 0);
        EXPECT_EQ(m_file.GetFileLength() + m_file.GetFileRemaining(), 0U);
        return m_file.GetLastError();
    };
    EXPECT_EQ(errorOf(nullptr, kRead), VAIFile::eNoPath);
    EXPECT_EQ(Described(), "cannot open a file: no path");
    EXPECT_EQ(errorOf(fifo.c_str(), kRead), VAIFile::eCannotOpen);
    EXPECT_EQ(Described(), "cannot open " + fifo + ": not a regular file");
    for (char const* const path : {"", m_scratch.Path(), m_scratch.Folder().c_str(), fifo.c_str()}) {
        EXPECT_EQ(errorOf(path, kRead), VAIFile::eCannotOpen) << path;
    }
    EXPECT_EQ(errorOf(m_scratch.Path(), VAIFile::kChunkSafe), VAIFile::eCannotOpen);
    EXPECT_EQ(Described(), std::string("cannot open ") + m_scratch.Path() + ": Invalid argument")
        << "the mode";
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNotOpen);
    EXPECT_EQ(State() + Enter(), "-1 0");
    EXPECT_EQ(Read(7), 7);
    EXPECT_TRUE(m_file.Eof());
    EXPECT_FALSE(m_file.OpenChunk("TEST"));
    Open(kWrite);
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNone);
    EXPECT_EQ(Read(7), 7);
    EXPECT_TRUE(m_file.Eof());
    EXPECT_TRUE(m_file.Close()) << "a file that is written gives nothing";
    OpenOn("abcd", kRead);
    EXPECT_FALSE(m_file.Write8Bit("x"));
    EXPECT_FALSE(m_file.OpenChunk("TEST"));
    EXPECT_FALSE(m_file.Close());
}

TEST_F(AIFile, ReportsBytesThatWereLost) {
    ASSERT_TRUE(m_file.Open("/dev/full", kWrite));
    m_file << 5;
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNone) << "still in memory";
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eWriteFailed);
    EXPECT_EQ(Described(), "cannot write /dev/full at offset 0: No space left on device");
    ASSERT_TRUE(m_file.Open("/dev/full", kWrite));
    EXPECT_FALSE(m_file.OpenChunk("TEST"));
    EXPECT_FALSE(m_file.Write("a", 1));
    EXPECT_FALSE(m_file.Seek(0, VFile::kFromStart));
    {
        LineLogScope const log;
        m_file << "text";
        EXPECT_FALSE(VString("text").Serialize(m_file));
        EXPECT_EQ(log.Lines(), (std::vector<std::string>{"VAIFile::<< ARGH!", "VAIFile::<< ARGH!"}));
    }
    EXPECT_FALSE(VValue().Serialize(m_file));
    EXPECT_FALSE(m_file.Close());
    int const descriptor = ::dup(STDIN_FILENO); // the next file has the same number
    ::close(descriptor);
    Open(kWrite);
    EXPECT_TRUE(m_file.OpenChunk("TEST"));
    ::close(descriptor);
    EXPECT_FALSE(m_file.Close()) << "the last write succeeded, closing fails";
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eWriteFailed);
}

TEST_F(AIFile, FindsAFullDiskAtTheNextChunkOrAtTheEnd) {
    for (bool const isAnother : {true, false}) {
        Open(kWrite);
        EXPECT_TRUE(m_file.OpenChunk("LAST"));
        m_file << 1 << 2 << 3;
        FullDisk const full(14);
        EXPECT_TRUE(m_file.CloseChunk()) << "its body is in memory";
        EXPECT_EQ(m_scratch.Bytes(), "LAST" + BE32(12)) << "its length is not";
        if (isAnother) {
            EXPECT_FALSE(m_file.OpenChunk("NEXT"));
        }
        EXPECT_FALSE(m_file.Close());
        EXPECT_EQ(m_file.GetLastError(), VAIFile::eWriteFailed);
    }
}

TEST_F(AIFile, EndsWithAChecksumWhenAsked) {
    for (long const flags : {0L, VAIFile::kLittleEndian, VAIFile::kReplaceOnClose | VAIFile::kPadChunks}) {
        Open(kWrite | VAIFile::kChecksum | flags);
        m_file.OpenChunk("BODY");
        std::string const body(3 * BlockFile::kBlockSize, 'b');
        m_file.Write(body.data(), body.size());
        EXPECT_TRUE(m_file.CloseChunk());
        EXPECT_TRUE(m_file.Close());
        std::string const whole = m_scratch.Bytes();
        Open(kSafe | VAIFile::kChecksum | flags);
        EXPECT_EQ(Enter(), "BODY");
        EXPECT_TRUE(m_file.CloseChunk());
        EXPECT_EQ(Enter(), "CSUM");
        for (std::size_t const place :
             {std::size_t{9}, whole.size() - 12, whole.size() - 8, whole.size() - 1}) {
            std::string damaged = whole;
            damaged[place] = static_cast<char>(damaged[place] ^ 1);
            m_scratch.SetBytes(damaged);
            EXPECT_FALSE(m_file.Open(m_scratch.Path(), kSafe | VAIFile::kChecksum | flags)) << place;
            EXPECT_EQ(m_file.GetLastError(), VAIFile::eDamaged);
            EXPECT_TRUE(m_file.Open(m_scratch.Path(), kSafe | flags)) << "without asking";
        }
    }
    m_scratch.SetBytes("short");
    EXPECT_FALSE(m_file.Open(m_scratch.Path(), kSafe | VAIFile::kChecksum));
    OpenOn("123456789" + std::string("CSUM\0\0\0\4\xCB\xF4\x39\x26", 12), kSafe | VAIFile::kChecksum);
}

TEST_F(AIFile, ReplacesTheOldFileOnlyWhenTheNewOneIsWhole) {
    constexpr long kReplace = kWrite | VAIFile::kReplaceOnClose;
    m_scratch.SetBytes("old");
    {
        VAIFile ended;
        EXPECT_TRUE(ended.Open(m_scratch.Path(), kReplace));
        ended << 1;
    }
    EXPECT_EQ(m_scratch.Bytes(), "old") << "it was not closed";
    Open(kReplace);
    m_file.OpenChunk("OPEN");
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(Described(), std::string("cannot close ") + m_scratch.Path() + ": a chunk is open");
    Open(kReplace);
    m_file << 1 << 2 << 3;
    {
        FullDisk const full(8);
        EXPECT_FALSE(m_file.Close());
    }
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eWriteFailed);
    EXPECT_EQ(m_scratch.Bytes(), "old");
    Open(kReplace);
    m_file.OpenChunk("NEW.");
    m_file << 'x';
    m_file.CloseChunk();
    EXPECT_EQ(m_scratch.Bytes(), "old") << "until the end";
    EXPECT_TRUE(m_file.Close());
    EXPECT_EQ(m_scratch.Bytes(), Chunk("NEW.", "x"));
    EXPECT_FALSE(m_file.Open("/no/such/folder/f", kReplace));
    EXPECT_EQ(Described(), "cannot open /no/such/folder/f: No such file or directory");
}

TEST_F(AIFile, CollectsWhatItCannotReplace) {
    std::string const pipe = (m_scratch.Folder() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    int const reader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    for (bool const isChecked : {false, true}) {
        EXPECT_TRUE(m_file.Open(pipe.c_str(),
                                kWrite | VAIFile::kReplaceOnClose | (isChecked ? VAIFile::kChecksum : 0)));
        m_file.OpenChunk("PIPE");
        m_file << 'x' << 'y';
        m_file.CloseChunk();
        EXPECT_TRUE(m_file.Seek(8, VFile::kFromStart));
        m_file << 'z';
        EXPECT_EQ(m_file.GetFileLength(), 10U) << "what follows stays";
        EXPECT_TRUE(m_file.Seek(0, VFile::kFromEnd));
        EXPECT_TRUE(m_file.Close()) << Described();
        char bytes[50];
        std::string const read(bytes, static_cast<std::size_t>(::read(reader, bytes, sizeof bytes)));
        EXPECT_EQ(read.substr(0, 10), Chunk("PIPE", "zy"));
        m_scratch.SetBytes(read);
        EXPECT_EQ(m_file.Open(m_scratch.Path(), kSafe | VAIFile::kChecksum), isChecked);
    }
    ::close(reader);
    EXPECT_TRUE(m_file.Open("/dev/full", kWrite | VAIFile::kReplaceOnClose | VAIFile::kChecksum));
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(Described(), "cannot write /dev/full at offset 12: No space left on device");
}

TEST_F(AIFile, TellsAReadErrorFromTheEnd) {
    std::string bytes(2 * BlockFile::kBlockSize, 'x');
    OpenOn(Chunk("LONG", bytes));
    for (int const error : {EIO, 0}) {
        FailingReads const failing(static_cast<long>(BlockFile::kBlockSize), error);
        Open(kSafe);
        EXPECT_EQ(Enter(), "LONG");
        EXPECT_EQ(Read('y'), 'x');
        EXPECT_FALSE(m_file.Read(bytes.data(), bytes.size()));
        EXPECT_EQ(m_file.ChunkRemaining(), 0U);
        VFile const& asFile = m_file;
        EXPECT_EQ(asFile.ReadError(), error);
        EXPECT_EQ(asFile.ErrorDescription(), error == 0 ? ""
                                                        : (std::string("cannot read ") + m_scratch.Path() +
                                                           " at offset 65536: Input/output error")
                                                              .c_str());
    }
    Open(kSafe);
    EXPECT_EQ(m_file.ReadError(), 0) << "of this file, not of the one before";
}

TEST_F(AIFile, EndsAtFourGiB) {
    Open(kWrite);
    ASSERT_TRUE(m_file.OpenChunk("HUGE"));
    m_file.Seek(static_cast<long>(VAIFile::kMaxFileLength) - 6, VFile::kFromStart); // a hole, not bytes
    EXPECT_TRUE(m_file.Write("1234", 4));
    EXPECT_FALSE(m_file.Write("1234", 4));
    EXPECT_FALSE(m_file.CloseChunk());
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eWriteFailed);
    Open(kSafe);
    EXPECT_EQ(Enter(), "HUGE");
    EXPECT_EQ(State(), "8 4294967285") << "the chunk is as long as it became";
}

TEST_F(AIFile, GivesBackValuesFromEveryPlaceOfABlock) {
    for (long const mode : {kWrite, kSafe, kWrite | VAIFile::kLittleEndian, kSafe | VAIFile::kLittleEndian}) {
        Open(mode);
        EXPECT_TRUE(m_file.IsStoring() ? m_file.OpenChunk("ALL.") : Enter() == "ALL.");
        for (std::size_t i = 0; i < 9 * BlockFile::kBlockSize; i += 9) {
            double const number = -0.5 * static_cast<double>(i);
            m_file.IsStoring() ? m_file << number << 'x' : m_file;
            ASSERT_EQ(m_file.IsLoading() ? Read(0.0) : number, number);
            ASSERT_EQ(m_file.IsLoading() ? Read(' ') : 'x', 'x');
        }
        EXPECT_TRUE(m_file.CloseChunk());
        EXPECT_TRUE(m_file.Close());
    }
}

TEST_F(AIFile, MovesManyValuesAsOneByOne) {
    constexpr std::size_t kCount = BlockFile::kBlockSize / 3;
    std::vector<std::uint32_t> numbers(kCount);
    std::iota(numbers.begin(), numbers.end(), 0x00F0FFF0U);
    std::vector<short> const shorts{1, -2, 3};
    std::vector<long> const longs{-1, 0x7FFFFFFF};
    for (long const order : {0L, VAIFile::kLittleEndian}) {
        std::string bytes[2];
        for (bool const atOnce : {true, false}) {
            Open(kWrite | order);
            m_file.OpenChunk("MANY");
            if (atOnce) {
                m_file.Write("odd", 3);
                m_file.WriteValues(numbers.data(), kCount)
                    .WriteValues(shorts.data(), 3)
                    .WriteValues(longs.data(), 2);
            } else {
                m_file << 'o' << 'd' << 'd';
                std::for_each(numbers.begin(), numbers.end(), [this](auto number) { m_file << number; });
                m_file << shorts[0] << shorts[1] << shorts[2] << longs[0] << longs[1];
            }
            m_file.CloseChunk();
            EXPECT_TRUE(m_file.Close());
            bytes[atOnce] = m_scratch.Bytes();
        }
        EXPECT_EQ(bytes[0], bytes[1]);
        Open(kSafe | order);
        std::vector<short> readShorts(4, 7);
        m_file.ReadValues(readShorts.data(), 1);
        EXPECT_EQ(readShorts[0], 0) << "outside any chunk";
        Enter();
        char odd[3];
        std::vector<std::uint32_t> readNumbers(kCount);
        std::vector<long> readLongs(4, 7);
        m_file.ReadValues(odd, 3).ReadValues(readNumbers.data(), kCount).ReadValues(readShorts.data(), 3);
        m_file.ReadValues(readLongs.data(), 4);
        EXPECT_EQ(readNumbers, numbers);
        EXPECT_EQ(readShorts, (std::vector<short>{1, -2, 3, 7}));
        EXPECT_EQ(readLongs, (std::vector<long>{-1, 0x7FFFFFFF, 0, 0})) << "0 where the chunk ends";
    }
}

} // namespace
