#include "foundation/persistence/ChunkId.h"
#include "foundation/persistence/VArchive.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/VBitString.h"
#include "foundation/strings/values/VDate.h"
#include "foundation/strings/values/VPoint.h"
#include "foundation/strings/values/VValue.h"
#include "tests/persistence/ChunkBytes.h"
#include "tests/support/ScratchFile.h"

#include <climits>

namespace {

using namespace VFoundation;
using namespace testing_support;

struct Form {
    char const* suffix;
    long flags;
};

/// Writes everything that the file of values holds, or checks it.
struct Mover {
    VAIFile& file;

    template <class T>
    void Value(T value) {
        T moved = file.IsStoring() ? value : T{};
        file.IsStoring() ? file << moved : file >> moved;
        EXPECT_EQ(moved, value);
    }
    template <class T>
    void Object(T object) {
        T moved = file.IsStoring() ? object : T();
        file.IsStoring() ? file << moved : file >> moved;
        EXPECT_TRUE(moved.IsEqual(object));
    }
    void Text(std::string const& text) {
        EXPECT_EQ(file.IsStoring() ? (file << text.c_str(), text) : ReadString(file), text);
    }
    template <class Body>
    void Chunk(char const (&id)[5], Body body) {
        unsigned long read = ChunkId(id);
        EXPECT_TRUE(file.IsStoring() ? file.OpenChunk(id) : file.ReadChunkHeader(&read, nullptr));
        EXPECT_EQ(read, ChunkId(id));
        body();
        EXPECT_EQ(file.ChunkRemaining(), 0UL);
        EXPECT_TRUE(file.CloseChunk());
    }
    template <class... Ts>
    void Values(Ts... values) {
        (Value(values), ...);
    }
};

void MoveValues(VAIFile& file) {
    Mover mover{file};
    VValue value;
    value.Value().SetValueToDouble(0.25);
    VBitString bits;
    bits.SetFromString("10000010001");
    mover.Chunk("TEST", [&] {
        mover.Values(true, 'A', static_cast<unsigned char>(200), short{-2},
                     static_cast<unsigned short>(65534), -3L, 4294967293UL, LLONG_MIN, ULLONG_MAX - 1, 1.5F,
                     -0.1);
        mover.Text("abc");
        mover.Text("");
        mover.Chunk("Kid1", [&] { mover.Values('\1', '\2', '\3'); });
        mover.Chunk("Objs", [&] {
            mover.Object(VPoint(SPoint{10, -20}));
            mover.Object(value);
            mover.Object(VDate(1234567890123));
            mover.Object(bits);
            mover.Object(VString("Gold"));
        });
    });
    mover.Chunk("END!", [] {});
}

TEST(AIFileGolden, LoadAndAreSavedByteByByte) {
    ScratchFile const scratch;
    VAIFile file;
    VArchive archive;
    for (Form const& form : {Form{"-be.bin", 0}, Form{"-be-padded.bin", VAIFile::kPadChunks},
                             Form{"-le.bin", VAIFile::kLittleEndian},
                             Form{"-le-padded.bin", VAIFile::kLittleEndian | VAIFile::kPadChunks}}) {
        for (std::string const kind : {"values", "archive"}) {
            SCOPED_TRACE(kind + form.suffix);
            std::string const golden = BytesOf(PERSISTENCE_TEST_DATA "/" + kind + form.suffix);
            scratch.SetBytes(golden);
            for (long const mode : {VAIFile::kRead | VAIFile::kChunkSafe, long{VAIFile::kWrite}}) {
                ASSERT_TRUE(file.Open(scratch.Path(), mode | form.flags));
                kind == "values" ? MoveValues(file) : void(archive.Serialize(file));
                EXPECT_TRUE(file.Close());
            }
            EXPECT_EQ(scratch.Bytes(), golden);
        }
    }
}

} // namespace
