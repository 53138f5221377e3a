#include "foundation/core/VException.h"
#include "foundation/persistence/ChunkId.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VArchive.h"
#include "foundation/strings/VBitString.h"
#include "foundation/strings/VDate.h"
#include "foundation/strings/VPoint.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/VValue.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <memory>

namespace {

using namespace VFoundation;
using testing_support::ScratchFile;

struct Form {
    char const* suffix;
    long flags;
};
constexpr Form kForms[] = {{"-be", 0},
                           {"-be-padded", VAIFile::kPadChunks},
                           {"-le", VAIFile::kLittleEndian},
                           {"-le-padded", VAIFile::kLittleEndian | VAIFile::kPadChunks}};

std::string GoldenBytes(char const* kind, Form const& form) {
    std::ifstream file(PERSISTENCE_TEST_DATA "/" + std::string(kind) + form.suffix + ".bin",
                       std::ios::binary);
    std::string const bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_FALSE(bytes.empty());
    return bytes;
}

/// Everything that the file of values holds.
struct Values {
    bool flag = true;
    char letter = 'A';
    unsigned char byte = 200;
    short small = -2;
    unsigned short half = 65534;
    long number = -3;
    unsigned long count = 4294967293;
    long long big = std::numeric_limits<long long>::min();
    unsigned long long bigger = std::numeric_limits<unsigned long long>::max() - 1;
    float real = 1.5F;
    double precise = -0.1;
    std::string text = "abc";
    std::string nothing;
    std::string child = "\1\2\3";
    VPoint point{SPoint{10, -20}};
    VValue value;
    VDate date{1234567890123};
    VBitString bits;
    VString name{"Gold"};

    Values() {
        SValue quarter;
        quarter.SetValueToDouble(0.25);
        value = quarter;
        bits.SetFromString("10000010001");
    }

    static Values Blank() {
        Values blank;
        blank.flag = false;
        blank.letter = 0;
        blank.byte = 0;
        blank.small = 0;
        blank.half = 0;
        blank.number = 0;
        blank.count = blank.bigger = 0;
        blank.big = 0;
        blank.real = 0;
        blank.precise = 0;
        blank.text = blank.nothing = blank.child = "?";
        blank.point = VPoint();
        blank.value = SValue();
        blank.date = VDate();
        blank.bits = VBitString();
        blank.name = "";
        return blank;
    }

    bool operator==(Values const& other) const {
        return flag == other.flag && letter == other.letter && byte == other.byte && small == other.small &&
               half == other.half && number == other.number && count == other.count && big == other.big &&
               bigger == other.bigger && real == other.real && precise == other.precise &&
               text == other.text && nothing == other.nothing && child == other.child &&
               point.IsEqual(other.point) && value.IsEqual(other.value) && date == other.date &&
               bits == other.bits && name == other.name;
    }

    void Save(IAIFile& file) {
        file.OpenChunk("TEST");
        file << flag << letter << byte << small << half << number << count << big << bigger << real << precise
             << text.c_str() << static_cast<char const*>(nullptr);
        file.OpenChunk(ChunkId("Kid1"));
        file.Write(child.data(), child.size());
        file.CloseChunk();
        file.OpenChunk("Objs");
        file << point << value << date << bits << name;
        file.CloseChunk();
        file.CloseChunk();
        file.OpenChunk("END!");
        file.CloseChunk();
    }

    static void LoadText(IAIFile& file, std::string& text) {
        char* read = nullptr;
        file >> &read;
        text = read;
        delete[] read;
    }

    void Load(IAIFile& file) {
        file.ReadChunkHeader(nullptr, nullptr);
        file >> flag >> letter >> byte >> small >> half >> number >> count >> big >> bigger >> real >>
            precise;
        LoadText(file, text);
        LoadText(file, nothing);
        unsigned long id = 0;
        while (file.ChunkRemaining() && file.ReadChunkHeader(&id, nullptr)) {
            if (id == ChunkId("Kid1")) {
                for (child.clear(); file.ChunkRemaining();) {
                    char c = 0;
                    file >> c;
                    child += c;
                }
            } else if (id == ChunkId("Objs")) {
                file >> point >> value >> date >> bits >> name;
            }
            file.CloseChunk();
        }
        file.CloseChunk();
    }
};

TEST(GoldenFiles, OfValuesLoadAndSave) {
    ScratchFile const scratch;
    VAIFile file;
    for (Form const& form : kForms) {
        std::string const golden = GoldenBytes("values", form);
        scratch.SetBytes(golden);
        ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kRead | VAIFile::kChunkSafe | form.flags));
        Values loaded = Values::Blank();
        EXPECT_FALSE(loaded == Values());
        loaded.Load(file);
        EXPECT_TRUE(loaded == Values()) << form.suffix;
        unsigned long id = 0;
        unsigned long length = 1;
        EXPECT_TRUE(file.ReadChunkHeader(&id, &length));
        EXPECT_EQ(id, 0x454E4421U);
        EXPECT_EQ(length, 0U);
        ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kWrite | form.flags));
        loaded.Save(file);
        EXPECT_TRUE(file.Close());
        EXPECT_EQ(scratch.Bytes(), golden) << form.suffix;
    }
}

void FillArchive(VArchive& archive) {
    for (char const* const path : {"a/b", ""}) {
        auto const info = VObjectRef<VFileInfo>::Adopt(new VFileInfo);
        info->SetPath(path);
        info->SetFlag(*path != '\0');
        archive.Infos().AddObject(info.Get());
    }
    for (std::string const& bytes : {std::string("xyz"), std::string()}) {
        auto const data = VObjectRef<VData>::Adopt(new VData(bytes.size()));
        bytes.copy(reinterpret_cast<char*>(data->Bytes()), bytes.size());
        archive.Data().AddObject(data.Get());
    }
}

bool IsFilledArchive(VArchive const& archive) {
    if (archive.Infos().Count() != 2 || archive.Data().Count() != 2) {
        return false;
    }
    VFileInfo const& first = *archive.Infos().ObjectAtIndexTyped(0);
    VFileInfo const& second = *archive.Infos().ObjectAtIndexTyped(1);
    VData const& data = *archive.Data().ObjectAtIndexTyped(0);
    return std::string(first.Path()) == "a/b" && first.Flag() && !*second.Path() && !second.Flag() &&
           data.Length() == 3 && std::string(reinterpret_cast<char const*>(data.Bytes()), 3) == "xyz" &&
           archive.Data().ObjectAtIndexTyped(1)->Length() == 0;
}

TEST(GoldenFiles, OfArchivesLoadAndSave) {
    ScratchFile const scratch;
    VAIFile file;
    for (Form const& form : kForms) {
        std::string const golden = GoldenBytes("archive", form);
        VArchive archive;
        FillArchive(archive);
        ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kWrite | form.flags));
        EXPECT_TRUE(archive.Serialize(file));
        EXPECT_TRUE(file.Close());
        EXPECT_EQ(scratch.Bytes(), golden) << form.suffix;
        ASSERT_TRUE(file.Open(scratch.Path(), VAIFile::kRead | VAIFile::kChunkSafe | form.flags));
        VArchive loaded;
        loaded.Serialize(file);
        EXPECT_TRUE(IsFilledArchive(loaded)) << form.suffix;
    }
}

/// Every truncation of a file, and every byte of it set to each of four values.
void ForEachDamage(std::string const& golden, std::function<void(std::string const&)> const& use) {
    for (std::size_t i = 0; i < golden.size(); ++i) {
        use(golden.substr(0, i));
        for (char const byte : {'\x00', '\x7F', '\x80', '\xFF'}) {
            std::string damaged = golden;
            damaged[i] = byte;
            use(damaged);
        }
    }
}

/// Visits all chunks by their headers alone and reads the bodies as strings, for any damage.
void Wander(VAIFile& file) {
    while (file.ReadChunkHeader(nullptr, nullptr)) {
        Wander(file);
        char* text = nullptr;
        file >> &text;
        delete[] text;
        file.CloseChunk();
    }
}

TEST(GoldenFiles, LoadHoweverDamaged) {
    ScratchFile const scratch;
    VAIFile file;
    Values values;
    VArchive archive;
    auto const start = std::chrono::steady_clock::now();
    long thrown = 0;
    testing::internal::CaptureStderr();
    for (Form const& form : kForms) {
        auto const open = [&](std::string const& bytes, long mode) {
            scratch.SetBytes(bytes);
            return file.Open(scratch.Path(), VAIFile::kRead | mode | form.flags);
        };
        ForEachDamage(GoldenBytes("values", form), [&](std::string const& damaged) {
            for (long const mode : {0L, VAIFile::kChunkSafe}) {
                EXPECT_TRUE(open(damaged, mode));
                Wander(file);
            }
            EXPECT_TRUE(open(damaged, VAIFile::kChunkSafe));
            values.Load(file);
        });
        ForEachDamage(GoldenBytes("archive", form), [&](std::string const& damaged) {
            for (long const mode : {0L, VAIFile::kChunkSafe}) {
                EXPECT_TRUE(open(damaged, mode));
                try {
                    archive.Serialize(file);
                } catch (VException const& exception) {
                    EXPECT_EQ(exception.Id(), VException::eOutOfMemory);
                    ++thrown;
                }
                EXPECT_EQ(file.ChunkRemaining(), 0U) << "no chunk is left open";
                EXPECT_LE(archive.Data().Count(), 4);
            }
        });
        EXPECT_TRUE(open(GoldenBytes("values", form), VAIFile::kChunkSafe));
        values.Load(file);
        EXPECT_TRUE(values == Values()) << "the objects are still good for a good file";
        EXPECT_TRUE(open(GoldenBytes("archive", form), VAIFile::kChunkSafe));
        archive.Serialize(file);
        EXPECT_TRUE(IsFilledArchive(archive));
    }
    testing::internal::GetCapturedStderr();
    EXPECT_GT(thrown, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

} // namespace
