#include "foundation/persistence/VAIFile.h"

#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VPoint.h"
#include "tests/persistence/ChunkBytes.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <sys/stat.h>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::BE32;
using testing_support::Chunk;
using testing_support::ChunkClaiming;
using testing_support::ScratchFile;

constexpr long kSafe = VAIFile::kRead | VAIFile::kChunkSafe;

class AIFile : public testing::Test {
  protected:
    void OpenOn(std::string const& bytes, long mode = kSafe) {
        m_scratch.SetBytes(bytes);
        ASSERT_TRUE(m_file.Open(m_scratch.Path(), mode));
    }
    void OpenToWrite(long flags = 0) { ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite | flags)); }
    template <class T>
    T Read(T before) {
        m_file >> before;
        return before;
    }
    std::string ReadString() {
        char* text = nullptr;
        m_file >> &text;
        std::unique_ptr<char[]> const owned(text);
        return text ? text : "(null)";
    }
    /// The id of the next chunk, entered; 0 when there is none.
    unsigned long Enter() {
        unsigned long id = 0;
        return m_file.ReadChunkHeader(&id, nullptr) ? id : 0;
    }

    ScratchFile const m_scratch;
    VAIFile m_file;
};

template <class T>
void ExpectRoundTrip(VAIFile& file, char const* path, long order, unsigned long width) {
    using Limits = std::numeric_limits<T>;
    std::vector<T> values{T{}, T{1}, Limits::lowest(), Limits::max()};
    if constexpr (std::is_floating_point_v<T>) {
        values.insert(values.end(), {Limits::infinity(), Limits::denorm_min(), static_cast<T>(-0.1)});
    }
    if constexpr (std::is_same_v<T, long>) {
        values = {0, -1, INT32_MIN, INT32_MAX};
    } else if constexpr (std::is_same_v<T, unsigned long>) {
        values = {0, 1, UINT32_MAX};
    }
    ASSERT_TRUE(file.Open(path, VAIFile::kWrite | order));
    file.OpenChunk("TYPE");
    for (T const value : values) {
        file << value;
    }
    EXPECT_EQ(file.GetFileLength(), 8 + values.size() * width);
    EXPECT_TRUE(file.CloseChunk());
    ASSERT_TRUE(file.Open(path, kSafe | order));
    file.ReadChunkHeader(nullptr, nullptr);
    for (T const value : values) {
        T read{};
        file >> read;
        EXPECT_EQ(read, value);
    }
    EXPECT_EQ(file.ChunkRemaining(), 0U);
}

TEST_F(AIFile, CarriesEveryTypeInBothOrders) {
    char const* const path = m_scratch.Path();
    for (long const order : {0L, VAIFile::kLittleEndian}) {
        ExpectRoundTrip<bool>(m_file, path, order, 1);
        ExpectRoundTrip<char>(m_file, path, order, 1);
        ExpectRoundTrip<unsigned char>(m_file, path, order, 1);
        ExpectRoundTrip<short>(m_file, path, order, 2);
        ExpectRoundTrip<unsigned short>(m_file, path, order, 2);
        ExpectRoundTrip<int>(m_file, path, order, 4);
        ExpectRoundTrip<unsigned int>(m_file, path, order, 4);
        ExpectRoundTrip<long>(m_file, path, order, 4);
        ExpectRoundTrip<unsigned long>(m_file, path, order, 4);
        ExpectRoundTrip<long long>(m_file, path, order, 8);
        ExpectRoundTrip<unsigned long long>(m_file, path, order, 8);
        ExpectRoundTrip<float>(m_file, path, order, 4);
        ExpectRoundTrip<double>(m_file, path, order, 8);
    }
}

TEST_F(AIFile, KeepsNaNsAndTheLowHalfOfALong) {
    OpenToWrite();
    m_file << std::numeric_limits<double>::quiet_NaN() << 0x1234567890ABCDEFL << true << '\x7F';
    m_file.Write("\x80", 1);
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead));
    EXPECT_TRUE(std::isnan(Read(0.0)));
    EXPECT_EQ(Read(0L), static_cast<long>(static_cast<std::int32_t>(0x90ABCDEF)));
    EXPECT_TRUE(Read(false));
    EXPECT_TRUE(Read(false)) << "any byte but 0 is true";
    EXPECT_TRUE(Read(false));
}

TEST_F(AIFile, ChangesItsOrderWhereItStands) {
    OpenToWrite();
    std::uint32_t const number = 0x01020304;
    m_file << 0x01020304;
    m_file.SetLE(true);
    m_file << 0x01020304;
    EXPECT_EQ(m_file.Write32BitBE(&number), 1U);
    EXPECT_TRUE(m_file.IsLE());
    m_file.Close();
    EXPECT_EQ(m_scratch.Bytes(), "\1\2\3\4\4\3\2\1\1\2\3\4");
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead | VAIFile::kLittleEndian));
    m_file.Seek(8, VFile::kFromStart);
    std::uint32_t read = 0;
    EXPECT_EQ(m_file.Read32BitBE(&read), 1U);
    EXPECT_EQ(read, number);
    EXPECT_EQ(m_file.Read32Bit(&read), 0U);
}

TEST_F(AIFile, WritesChunksByteByByte) {
    struct {
        long flags;
        std::string expected;
    } const cases[] = {{0, Chunk("TEST", "abc")},
                       {VAIFile::kPadChunks, Chunk("TEST", "abc") + '\0'},
                       {VAIFile::kLittleEndian, std::string("TEST\3\0\0\0abc", 11)}};
    for (auto const& [flags, expected] : cases) {
        for (bool const byNumber : {false, true}) {
            OpenToWrite(flags);
            EXPECT_TRUE(byNumber ? m_file.OpenChunk(0x54455354UL) : m_file.OpenChunk("TEST"));
            EXPECT_TRUE(m_file.Write("abc", 3));
            EXPECT_TRUE(m_file.CloseChunk());
            EXPECT_TRUE(m_file.Close());
            EXPECT_EQ(m_scratch.Bytes(), expected);
        }
    }
    OpenToWrite();
    EXPECT_TRUE(m_file.OpenChunk("ab"));
    EXPECT_EQ(m_scratch.Bytes(), std::string("ab\0\0\0\0\0\0", 8)) << "opening a chunk writes it out";
    m_file << 'x';
    EXPECT_EQ(m_scratch.Bytes().size(), 8U);
    EXPECT_TRUE(m_file.OpenChunk(static_cast<char const*>(nullptr)));
    EXPECT_TRUE(m_file.CloseChunk() && m_file.CloseChunk());
    EXPECT_EQ(m_scratch.Bytes(), Chunk("ab", 'x' + std::string(8, '\0')).insert(2, 2, '\0'));
}

TEST_F(AIFile, PadsByOffsetWhenWritingAndByLengthWhenReading) {
    OpenToWrite(VAIFile::kPadChunks);
    m_file << 'x'; // the chunk starts at an odd offset, so its odd body ends at an even one
    m_file.OpenChunk("ODDS");
    m_file << 'y';
    m_file.CloseChunk();
    m_file.Close();
    EXPECT_EQ(m_scratch.Bytes(), 'x' + Chunk("ODDS", "y"));
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead | VAIFile::kPadChunks));
    EXPECT_EQ(Read(' '), 'x');
    EXPECT_EQ(Enter(), 0x4F444453UL);
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(m_file.GetPos(), 11);
}

TEST_F(AIFile, NestsSixteenDeep) {
    OpenToWrite();
    std::string expected;
    for (unsigned long depth = 0; depth < VAIFile::kMaxDepth; ++depth) {
        EXPECT_TRUE(m_file.OpenChunk("DEEP"));
    }
    EXPECT_FALSE(m_file.OpenChunk("DEEP"));
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eTooDeep);
    EXPECT_EQ(m_file.GetChunkLength(), 0U);
    EXPECT_EQ(m_file.GetFileLength(), 16 * 8U);
    for (unsigned long depth = 0; depth < VAIFile::kMaxDepth; ++depth) {
        EXPECT_TRUE(m_file.CloseChunk());
        expected = Chunk("DEEP", expected);
    }
    EXPECT_FALSE(m_file.CloseChunk());
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNoChunk);
    EXPECT_TRUE(m_file.Close());
    EXPECT_EQ(m_scratch.Bytes(), expected);

    for (int depth = 0; depth < 4; ++depth) {
        expected = Chunk("DEEP", expected);
    }
    OpenOn(expected);
    for (unsigned long depth = 0; depth < VAIFile::kMaxDepth; ++depth) {
        EXPECT_NE(Enter(), 0U);
    }
    EXPECT_EQ(Enter(), 0U);
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eTooDeep);
    EXPECT_EQ(m_file.GetPos(), 16 * 8) << "a refused header consumes nothing";
    EXPECT_EQ(m_file.GetChunkLength(), 0U);
    EXPECT_FALSE(m_file.CloseChunk()) << "the error stands";
    EXPECT_EQ(m_file.GetPos(), 20 * 8);
}

TEST_F(AIFile, SkipsWhatIsLeftAndCountsForTheParent) {
    for (bool const padded : {false, true}) {
        std::string const pad(padded ? 1 : 0, '\0');
        OpenOn(Chunk("OUTR", Chunk("KID1", "abc") + pad + Chunk("KID2", "ab")) + Chunk("NEXT", ""),
               kSafe | (padded ? VAIFile::kPadChunks : 0));
        Enter();
        EXPECT_EQ(m_file.ChunkRemaining(), 21U + pad.size());
        EXPECT_EQ(Enter(), 0x4B494431UL);
        EXPECT_EQ(Read(' '), 'a');
        EXPECT_EQ(m_file.ChunkRemaining(), 2U);
        EXPECT_TRUE(m_file.CloseChunk());
        EXPECT_EQ(m_file.ChunkRemaining(), 10U);
        EXPECT_EQ(m_file.GetChunkLength(), 3U) << "of the chunk last read at the next level";
        EXPECT_EQ(Enter(), 0x4B494432UL);
        m_file.UnreadHeader();
        EXPECT_EQ(m_file.ChunkRemaining(), 10U);
        EXPECT_EQ(Enter(), 0x4B494432UL);
        EXPECT_TRUE(m_file.CloseChunk());
        EXPECT_EQ(m_file.ChunkRemaining(), 0U);
        EXPECT_TRUE(m_file.CloseChunk());
        unsigned long length = 7;
        EXPECT_TRUE(m_file.ReadChunkHeader(nullptr, &length));
        EXPECT_EQ(length, 0U);
        EXPECT_TRUE(m_file.CloseChunk());
        EXPECT_EQ(Enter(), 0U);
        EXPECT_TRUE(m_file.Eof());
    }
}

TEST_F(AIFile, StopsAtTheEndOfAChunkWhenChunkSafe) {
    OpenOn(Chunk("TWOB", "ab") + Chunk("MORE", "cdefghijkl"));
    Enter();
    EXPECT_EQ(Read(7), 0);
    EXPECT_EQ(Read(7.0), 0.0);
    EXPECT_EQ(ReadString(), "");
    EXPECT_EQ(m_file.ChunkRemaining(), 2U) << "nothing was consumed";
    char bytes[5] = {'x', 'x', 'x', 'x', 'x'};
    EXPECT_TRUE(m_file.Read(bytes, 4));
    EXPECT_EQ(std::string(bytes, 5), std::string("ab\0\0x", 5));
    EXPECT_FALSE(m_file.Read(bytes, 1)) << "nothing was there";
    EXPECT_EQ(bytes[0], '\0');
    EXPECT_TRUE(m_file.Read(bytes, 0));
    EXPECT_EQ(Read(7), 0);
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(Enter(), 0x4D4F5245UL);
    EXPECT_EQ(Read(0), 0x63646566);
    EXPECT_EQ(m_file.ChunkRemaining(), 6U);
}

TEST_F(AIFile, ReadsSixtyFourBitsWhateverTheChunkHolds) {
    OpenOn(Chunk("TWOB", "\1\2") + "\3\4\5\6\7\x08");
    Enter();
    EXPECT_EQ(Read(0LL), 0x0102030405060708LL);
    EXPECT_EQ(m_file.ChunkRemaining(), 0U);
    OpenOn(ChunkClaiming("EIGH", 8, "ab"));
    Enter();
    EXPECT_EQ(Read(7LL), 7) << "the file ends";
    EXPECT_EQ(m_file.ChunkRemaining(), 0U);
}

TEST_F(AIFile, ReadsASignedShortOnlyInsideChunks) {
    for (long const mode : {kSafe, VAIFile::kRead}) {
        OpenOn("\1\2" + Chunk("SHRT", "\3\4"), mode);
        EXPECT_EQ(Read(short{7}), 0);
        EXPECT_EQ(m_file.GetPos(), 0);
        bool const isSafe = mode == kSafe;
        EXPECT_EQ(Read(static_cast<unsigned short>(7)), isSafe ? 0 : 0x0102);
        m_file.Seek(2, VFile::kFromStart);
        Enter();
        EXPECT_EQ(Read(short{7}), 0x0304);
    }
}

TEST_F(AIFile, CountsNothingWithoutChunkSafety) {
    OpenOn(Chunk("OUTR", Chunk("KID1", "abcd") + "wxyz") + "0123456789", VAIFile::kRead);
    Enter();
    Enter();
    EXPECT_EQ(Read(0), 0x61626364);
    EXPECT_EQ(m_file.ChunkRemaining(), 4U);
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(m_file.GetPos(), 24) << "the whole length was skipped from behind the value";
    EXPECT_EQ(m_file.ChunkRemaining(), 4U) << "the child counts all the same";
}

TEST_F(AIFile, LeavesValuesThatTheFileDoesNotHave) {
    OpenOn("ab", VAIFile::kRead);
    EXPECT_EQ(Read(7), 7);
    EXPECT_TRUE(m_file.Eof());
    EXPECT_EQ(m_file.GetPos(), 2);
    EXPECT_EQ(ReadString(), "");
    char bytes[4] = {'x', 'x', 'x', 'x'};
    m_file.Seek(1, VFile::kFromStart);
    EXPECT_FALSE(m_file.Eof());
    EXPECT_FALSE(m_file.Read(bytes, 4));
    EXPECT_EQ(std::string(bytes, 4), "bxxx");
}

TEST_F(AIFile, EndsEveryLoopOnADamagedLength) {
    OpenOn(ChunkClaiming("HUGE", 0xFFFFFFFF, "abcd"));
    Enter();
    long reads = 0;
    for (; m_file.ChunkRemaining() && reads < 100; ++reads) {
        Read(' ');
    }
    EXPECT_EQ(reads, 5);
    EXPECT_TRUE(m_file.CloseChunk());

    // A child that is longer than its parent, at the largest length with a pad byte on top.
    OpenOn(Chunk("OUTR", ChunkClaiming("LONG", 0xFFFFFFFF, "")), kSafe | VAIFile::kPadChunks);
    Enter();
    Enter();
    EXPECT_EQ(m_file.ChunkRemaining(), 0xFFFFFFFFUL);
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(m_file.ChunkRemaining(), 0U);
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(Enter(), 0U);
    m_file.UnreadHeader();

    // Less than a header before the end of the parent: not a chunk.
    OpenOn(Chunk("OUTR", "1234567") + Chunk("NEXT", ""));
    Enter();
    EXPECT_EQ(Enter(), 0U);
    EXPECT_TRUE(m_file.CloseChunk());
    EXPECT_EQ(Enter(), 0x4E455854UL);
}

TEST_F(AIFile, CarriesStrings) {
    OpenToWrite();
    m_file << "abc" << static_cast<char const*>(nullptr) << std::string(70'000, 's').c_str() << "\xFF\n";
    m_file.Close();
    EXPECT_EQ(m_scratch.Bytes().substr(0, 11), std::string("\0\4abc\0\0\1\0\xFF\xFF", 11));
    OpenOn(m_scratch.Bytes(), VAIFile::kRead);
    EXPECT_EQ(ReadString(), "abc");
    EXPECT_EQ(ReadString(), "");
    EXPECT_EQ(ReadString(), std::string(VAIFile::kMaxTextLength, 's'));
    EXPECT_EQ(ReadString(), "\xFF\n");

    OpenOn(Chunk("STRS", std::string("\0\0\0\xFF"
                                     "abc",
                                     7)) +
           "defg");
    Enter();
    EXPECT_EQ(ReadString(), "");
    EXPECT_EQ(ReadString(), "abc") << "no more than the chunk holds";
    EXPECT_EQ(m_file.ChunkRemaining(), 0U);
    EXPECT_EQ(m_file.GetPos(), 15);
    m_file >> static_cast<char**>(nullptr);
}

TEST_F(AIFile, LetsObjectsMoveThemselves) {
    VPoint point(SPoint{3, 4});
    OpenToWrite();
    EXPECT_EQ(&(m_file << point << 5), static_cast<IAIFile*>(&m_file));
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead));
    VPoint read;
    m_file >> read;
    EXPECT_TRUE(read.IsEqual(point));
}

TEST_F(AIFile, MovesAroundAndIsAFile) {
    OpenOn("0123456789", VAIFile::kRead);
    VFile& asFile = m_file;
    EXPECT_TRUE(m_file.Seek(3, 1) && m_file.Seek(2, 0));
    EXPECT_EQ(Read(' '), '5');
    EXPECT_TRUE(m_file.Seek(-1, 2));
    EXPECT_EQ(m_file.GetPos(), 9);
    EXPECT_TRUE(m_file.Seek(1, 7) && asFile.FileSeek(-50, 0));
    EXPECT_EQ(asFile.GetPosition(), 9);
    EXPECT_EQ(asFile.GetLengthRemaining(), 1);
    EXPECT_TRUE(m_file.Seek(5, 2));
    EXPECT_EQ(m_file.GetFileRemaining(), 0U);
    EXPECT_EQ(Read('z'), 'z');
    EXPECT_TRUE(asFile.IsEndOfFile());

    OpenToWrite();
    m_file.Write("0123456789", 10);
    m_file.Seek(2, 1);
    m_file.Write("ab", 2);
    m_file.Seek(0, 2);
    m_file << 'c';
    EXPECT_EQ(m_file.GetFileLength(), 11U);
    m_file.Close();
    EXPECT_EQ(m_scratch.Bytes(), "01ab456789c");
}

TEST_F(AIFile, SaysWhyItDoesNotOpen) {
    std::string const fifo = (m_scratch.Folder() / "fifo").string();
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    struct {
        char const* path;
        long mode;
        long error;
    } const cases[] = {
        {nullptr, VAIFile::kRead, VAIFile::eNoPath},
        {"", VAIFile::kWrite, VAIFile::eCannotOpen},
        {m_scratch.Path(), VAIFile::kRead, VAIFile::eCannotOpen}, // not there yet
        {m_scratch.Path(), VAIFile::kChunkSafe, VAIFile::eCannotOpen},
        {m_scratch.Folder().c_str(), VAIFile::kRead, VAIFile::eCannotOpen},
        {m_scratch.Folder().c_str(), VAIFile::kWrite, VAIFile::eCannotOpen},
        {fifo.c_str(), VAIFile::kRead, VAIFile::eCannotOpen},
        {"/dev/full", VAIFile::kRead, VAIFile::eCannotOpen},
    };
    for (auto const& [path, mode, error] : cases) {
        EXPECT_FALSE(m_file.Open(path, mode));
        EXPECT_EQ(m_file.GetLastError(), error) << (path ? path : "null");
        EXPECT_FALSE(m_file.IsLoading() || m_file.IsStoring());
    }
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNotOpen);
    EXPECT_EQ(m_file.GetPos(), -1);
    EXPECT_TRUE(m_file.Eof());
    EXPECT_EQ(m_file.GetFileLength(), 0U);
    EXPECT_EQ(Read(7), 7);
    EXPECT_EQ(Enter(), 0U);
    EXPECT_FALSE(m_file.Write("a", 1));
    EXPECT_FALSE(m_file.OpenChunk("TEST"));
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eWriteFailed);
    OpenToWrite();
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNone);
    EXPECT_TRUE(m_file.IsStoring());
    EXPECT_EQ(Read(7), 7) << "a file that is written gives nothing";
    EXPECT_TRUE(m_file.Eof());
    EXPECT_TRUE(m_file.Close());
    OpenOn("abcd", VAIFile::kRead);
    EXPECT_EQ(m_file.Write8Bit("x"), 0U);
    EXPECT_FALSE(m_file.OpenChunk("TEST"));
    EXPECT_FALSE(m_file.Close());
}

TEST_F(AIFile, ReportsBytesThatWereLost) {
    ASSERT_TRUE(m_file.Open("/dev/full", VAIFile::kWrite));
    m_file << 5;
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNone) << "still in memory";
    EXPECT_FALSE(m_file.Close());
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eWriteFailed);

    ASSERT_TRUE(m_file.Open("/dev/full", VAIFile::kWrite));
    EXPECT_FALSE(m_file.OpenChunk("TEST"));
    EXPECT_FALSE(m_file.Write("a", 1));
    EXPECT_FALSE(m_file.Seek(0, VFile::kFromStart));
    testing::internal::CaptureStderr();
    m_file << "text";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "VAIFile::<< ARGH!");
    EXPECT_FALSE(m_file.Close());

    ASSERT_TRUE(m_file.Open("/dev/full", VAIFile::kWrite));
    std::vector<char> const much(200'000);
    EXPECT_FALSE(m_file.Write(much.data(), much.size()));
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eWriteFailed);
}

TEST_F(AIFile, EndsAtFourGiB) {
    OpenToWrite();
    ASSERT_TRUE(m_file.OpenChunk("HUGE"));
    m_file.Seek(static_cast<long>(VAIFile::kMaxFileLength) - 6, VFile::kFromStart); // a hole, not bytes
    m_file << 1;
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eNone);
    m_file << 2;
    EXPECT_EQ(m_file.GetLastError(), VAIFile::eWriteFailed);
    EXPECT_FALSE(m_file.CloseChunk());
    EXPECT_FALSE(m_file.Close());
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), kSafe));
    EXPECT_EQ(m_file.GetFileLength(), VAIFile::kMaxFileLength - 2);
    Enter();
    EXPECT_EQ(m_file.ChunkRemaining(), VAIFile::kMaxFileLength - 2 - 8)
        << "the chunk is as long as it became";
}

/// Moves a long, repeatable mix of values, blobs and nested chunks, so that values and chunk ends fall on every
/// place of the block.
class Mix {
  public:
    explicit Mix(unsigned seed) : m_random(seed) {}

    void Write(VAIFile& file) {
        file.OpenChunk("MIXD");
        int depth = 1;
        for (int i = 0; i < kSteps; ++i) {
            switch (unsigned const what = static_cast<unsigned>(m_random()); what % 8) {
            case 0:
                depth += depth < 15 && file.OpenChunk("MIXD") ? 1 : 0;
                break;
            case 1:
                depth -= depth > 1 && file.CloseChunk() ? 1 : 0;
                break;
            case 2: {
                std::vector<unsigned char> const bytes(SizeFrom(what), static_cast<unsigned char>(what >> 3));
                EXPECT_TRUE(file.Write(bytes.data(), bytes.size()));
                break;
            }
            case 3:
                file << std::to_string(what).c_str();
                break;
            case 4:
                file << static_cast<unsigned char>(what);
                break;
            default:
                file << what << static_cast<unsigned short>(what) << static_cast<double>(what);
            }
        }
        while (depth-- > 0) {
            EXPECT_TRUE(file.CloseChunk());
        }
        EXPECT_TRUE(file.Close());
    }

    void Check(VAIFile& file) {
        file.ReadChunkHeader(nullptr, nullptr);
        int depth = 1;
        for (int i = 0; i < kSteps && !testing::Test::HasFailure(); ++i) {
            switch (unsigned const what = static_cast<unsigned>(m_random()); what % 8) {
            case 0:
                depth += depth < 15 && file.ReadChunkHeader(nullptr, nullptr) ? 1 : 0;
                break;
            case 1:
                if (depth > 1) {
                    ASSERT_EQ(file.ChunkRemaining(), 0U);
                    depth -= file.CloseChunk() ? 1 : 0;
                }
                break;
            case 2: {
                std::vector<unsigned char> bytes(SizeFrom(what));
                EXPECT_TRUE(file.Read(bytes.data(), bytes.size()));
                EXPECT_EQ(bytes, std::vector(bytes.size(), static_cast<unsigned char>(what >> 3)));
                break;
            }
            case 3: {
                char* text = nullptr;
                file >> &text;
                EXPECT_STREQ(text, std::to_string(what).c_str());
                delete[] text;
                break;
            }
            case 4: {
                unsigned char byte = 0;
                file >> byte;
                EXPECT_EQ(byte, static_cast<unsigned char>(what));
                break;
            }
            default: {
                unsigned number = 0;
                unsigned short half = 0;
                double real = 0;
                file >> number >> half >> real;
                EXPECT_EQ(number, what);
                EXPECT_EQ(half, static_cast<unsigned short>(what));
                EXPECT_EQ(real, static_cast<double>(what));
            }
            }
        }
    }

  private:
    static constexpr int kSteps = 20'000;
    static std::size_t SizeFrom(unsigned what) {
        return what % 512 == 2 ? 1 + (what >> 16) * 2 : 1 + (what >> 10) % 200;
    }

    std::mt19937 m_random;
};

TEST_F(AIFile, GivesBackALongMixOfEverything) {
    for (unsigned const seed : {1U, 2U}) {
        long const flags = seed == 2 ? VAIFile::kLittleEndian : 0;
        OpenToWrite(flags);
        Mix(seed).Write(m_file);
        ASSERT_TRUE(m_file.Open(m_scratch.Path(), kSafe | flags));
        Mix(seed).Check(m_file);
    }
}

} // namespace
