#include "foundation/strings/VData.h"

#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "tests/support/SavedForms.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <initializer_list>

namespace {

using namespace VFoundation;
using VDataTest = testing_support::SavedForms;

void Fill(VData& data) {
    for (unsigned long i = 0; i < data.Length(); ++i) {
        data.Bytes()[i] = static_cast<unsigned char>(i * 7 + 1);
    }
}

TEST(VData, LengthsChange) {
    VData data(10);
    EXPECT_TRUE(std::all_of(data.Bytes(), data.Bytes() + 10, [](unsigned char byte) { return byte == 0; }));
    Fill(data);
    for (unsigned long length = 11; length < 200'000; length += length / 3) {
        ASSERT_TRUE(data.SetLength(length, true));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(data.Bytes()) % 16, 0U);
        ASSERT_EQ(data.Bytes()[9], 9 * 7 + 1);
        data.Bytes()[length - 1] = 1; // all of it is there
    }
    EXPECT_TRUE(data.SetLength(5, true));
    EXPECT_EQ(data.Bytes()[4], 4 * 7 + 1);
    EXPECT_TRUE(data.SetLength(0, true));
    EXPECT_EQ(data.Bytes(), nullptr);
    EXPECT_EQ(data.Length(), 0U);
}

TEST(VData, RefusedLengthsLeaveItAsItWas) {
    VData data(4);
    try {
        data.SetLength(VData::kMaxLength + 1, true);
        FAIL() << "a length above 32 bits was accepted";
    } catch (VException const& exception) {
        EXPECT_EQ(exception.Id(), VException::eOutOfMemory);
        EXPECT_EQ(exception.Source(), &data);
        EXPECT_TRUE(exception.DescriptionText() == "Error setting VData length");
    }
    EXPECT_TRUE(data == VData(4));
}

TEST(VData, ComparesAndCopiesByContent) {
    VData data(100);
    Fill(data);
    auto const copy = VObjectRef<VData>::Adopt(data.Copy());
    EXPECT_TRUE(data.IsEqual(*copy));
    data.Bytes()[99] = 0;
    EXPECT_TRUE(data != *copy);
    EXPECT_FALSE(data.IsEqual(*copy));
    EXPECT_TRUE(VData(3) != VData(4));
    EXPECT_FALSE(VData().IsEqual(VString()));
}

TEST(VData, DescribesItself) {
    EXPECT_STREQ(VData().Description().CString(), "[VData] Length: 0  Ptr: 0x00000000  Owned: no");
}

TEST_F(VDataTest, TravelsThroughAFile) {
    VData data(100);
    Fill(data);
    SaveChunk(data);
    VData read(7);
    EXPECT_TRUE(ReadChunk(read));
    EXPECT_TRUE(read == data);
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite));
    EXPECT_TRUE(data.Serialize_YeOldeZephStyle(m_file));
    EXPECT_EQ(m_file.GetFileLength(), 100U) << "no length";
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead));
    read.SetLength(60, false);
    EXPECT_TRUE(read.Serialize_YeOldeZephStyle(m_file));
    EXPECT_EQ(read.Length(), 60U);
    EXPECT_EQ(read.Bytes()[59], data.Bytes()[59]);
}

/// Loads buffers from a file that names their lengths and has 10 bytes for the last; returns that one.
VObjectRef<VData> LoadClaiming(std::initializer_list<long long> lengths, long mode) {
    testing_support::ScratchFile const scratch;
    VAIFile file;
    file.Open(scratch.Path(), VAIFile::kWrite);
    file.OpenChunk("DATA");
    for (long long const length : lengths) {
        file << length;
    }
    file.Write("0123456789", 10);
    file.CloseChunk();
    file.Open(scratch.Path(), mode);
    file.ReadChunkHeader(nullptr, nullptr);
    VObjectRef<VData> data;
    for (unsigned long i = 0; i < lengths.size(); ++i) {
        file.Seek(8 + 8 * static_cast<long>(i), VFile::kFromStart);
        data.Allocate()->Serialize(file);
    }
    return data;
}

TEST(VData, LoadsNoLengthThatTheFileCannotBack) {
    long long const limit = 10 + static_cast<long long>(VData::kMaxUnbackedLength);
    for (long const mode : {VAIFile::kRead, VAIFile::kRead + VAIFile::kChunkSafe}) {
        for (long long const length : {limit + 1, 0xFFFFFFFFLL, -1LL}) {
            EXPECT_THROW(LoadClaiming({length}, mode), VException) << length;
        }
        EXPECT_EQ(LoadClaiming({limit}, mode)->Length(), static_cast<unsigned long>(limit));
        EXPECT_THROW(LoadClaiming({limit - 100, 1000}, mode), VException) << "all claims count together";
        auto const data = LoadClaiming({5000}, mode);
        EXPECT_EQ(data->Bytes()[9], '9');
        EXPECT_TRUE(
            std::all_of(data->Bytes() + 10, data->Bytes() + 5000, [](auto byte) { return byte == 0; }));
    }
}

TEST(VData, LooksAtTheLowHalfOfASavedLengthOnly) {
    EXPECT_EQ(LoadClaiming({0x7700000005LL}, VAIFile::kRead)->Length(), 5U);
    EXPECT_EQ(LoadClaiming({LLONG_MIN}, VAIFile::kRead)->Length(), 0U);
}

TEST(VData, ZeroesExactlyTheGivenBytes) {
    unsigned char bytes[300];
    EXPECT_FALSE(VData::FastZeroMemory(nullptr, 5));
    EXPECT_FALSE(VData::FastZeroMemory(bytes, 0));
    std::fill(std::begin(bytes), std::end(bytes), static_cast<unsigned char>(0xEE));
    EXPECT_TRUE(VData::FastZeroMemory(bytes + 3, 290));
    EXPECT_EQ(std::count(bytes + 3, bytes + 293, 0), 290);
    EXPECT_EQ(std::count(std::begin(bytes), std::end(bytes), 0), 290);
}

} // namespace
