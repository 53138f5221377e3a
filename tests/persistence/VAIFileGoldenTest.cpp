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
using testing_support::Mover;
using testing_support::ScratchFile;

struct Form {
    std::string suffix;
    long flags;
} const kForms[] = {{"-be.bin", 0},
                    {"-be-padded.bin", VAIFile::kPadChunks},
                    {"-le.bin", VAIFile::kLittleEndian},
                    {"-le-padded.bin", VAIFile::kLittleEndian | VAIFile::kPadChunks}};

std::string GoldenBytes(std::string const& kind, Form const& form) {
    return testing_support::BytesOf(PERSISTENCE_TEST_DATA "/" + kind + form.suffix);
}

/// Everything that the file of values holds.
void MoveValues(VAIFile& file, Mover::eHow how) {
    Mover mover{file, how};
    VPoint point(SPoint{10, -20});
    VDate date(1234567890123);
    VString name("Gold");
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
        mover.Chunk("Kid1", [&] { mover.Bytes("\1\2\3"); });
        mover.Chunk("Objs", [&] {
            mover.Object(point, VPoint());
            mover.Object(value, VValue());
            mover.Object(date, VDate());
            mover.Object(bits, VBitString());
            mover.Object(name, VString());
        });
    });
    mover.Chunk("END!", [] {});
}

/// The contents of an archive, name after name.
std::string ListOf(VArchive const& archive) {
    std::string list;
    for (long i = 0; i < archive.Infos().Count(); ++i) {
        VFileInfo const& info = *archive.Infos().ObjectAtIndexTyped(i);
        list += std::string(info.Path()) + (info.Flag() ? "+" : "-");
    }
    for (long i = 0; i < archive.Data().Count(); ++i) {
        VData const& data = *archive.Data().ObjectAtIndexTyped(i);
        list += "|" + std::string(reinterpret_cast<char const*>(data.Bytes()), data.Length());
    }
    return list;
}

TEST(AIFileGolden, LoadAndAreSavedByteByByte) {
    ScratchFile const scratch;
    VAIFile file;
    VArchive archive;
    for (Form const& form : kForms) {
        SCOPED_TRACE(form.suffix);
        for (std::string const kind : {"values", "archive"}) {
            std::string const golden = GoldenBytes(kind, form);
            scratch.SetBytes(golden);
            ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kRead | VAIFile::kChunkSafe | form.flags));
            kind == "values" ? MoveValues(file, Mover::eCheck) : void(archive.Serialize(file));
            ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kWrite | form.flags));
            kind == "values" ? MoveValues(file, Mover::eWrite) : void(archive.Serialize(file));
            EXPECT_TRUE(file.Close());
            EXPECT_EQ(scratch.Bytes(), golden);
        }
        EXPECT_EQ(ListOf(archive), "a/b+-|a/b|");
    }
}

} // namespace
