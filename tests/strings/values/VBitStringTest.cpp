#include "foundation/strings/values/VBitString.h"

#include "tests/support/SavedForms.h"

namespace {

using namespace VFoundation;
using VBitStringTest = testing_support::SavedForms;

VBitString Bits(char const* text) {
    VBitString bits;
    EXPECT_TRUE(bits.SetFromString(text));
    return bits;
}

TEST(VBitString, SetsAndCounts) {
    VBitString bits(70);
    for (int const index : {69, 0, 8, 12}) {
        EXPECT_TRUE(bits.SetBit(index, true));
        EXPECT_TRUE(bits.SetBit(index, true));
        EXPECT_TRUE(bits.GetBit(index));
    }
    EXPECT_TRUE(bits.FlipBit(0));
    EXPECT_TRUE(bits.FlipBit(1));
    for (int const index : {70, -1}) {
        EXPECT_FALSE(bits.SetBit(index, true));
        EXPECT_FALSE(bits.FlipBit(index));
        EXPECT_FALSE(bits.GetBit(index));
    }
    EXPECT_EQ(bits.CountOnes(), 4);
    bits.SetCount(9);
    bits.SetCount(70);
    EXPECT_EQ(bits.CountOnes(), 2) << "bits 12 and 69 are gone";
    EXPECT_EQ(VBitString(-1).Count(), 0);
}

TEST(VBitString, Combines) {
    VBitString combined = Bits("111111111");
    combined.And(Bits("1011"));
    combined.Or(Bits("0000000110111"));
    combined.Xor(Bits("11"));
    EXPECT_STREQ(combined.AsString().CString(), "011100011");
    EXPECT_FALSE(combined == Bits("0111000110")) << "one bit more";
    EXPECT_FALSE(combined.SetFromString("12"));
    EXPECT_FALSE(combined.SetFromString(nullptr));
    EXPECT_EQ(combined.Count(), 9);
}

TEST_F(VBitStringTest, TravelsThroughBothForms) {
    ExpectRoundTrips(Bits("1000000001"), VBitString(3), R"(<VBitString bits="1000000001" />)");
    ExpectRoundTrips(VBitString(), Bits("1"), R"(<VBitString bits="" />)");
    VBitString bits = Bits("101");
    EXPECT_FALSE(ReadXML(bits, "<VBitString/>"));
    EXPECT_FALSE(ReadXML(bits, "<VBitString bits='1x'/>"));
    EXPECT_TRUE(bits == Bits("101"));
}

TEST_F(VBitStringTest, TakesNoBitsFromAFileThatHasNone) {
    using std::string_literals::operator""s;
    struct {
        std::string bytes;
        bool isLoaded;
        int count, ones;
    } const rows[] = {{"\x7F\xFF\xFF\xFF"s, false, 0, 0},
                      {"\xFF\xFF\xFF\xFF"s, false, 0, 0},
                      {"\0\0\0\x0C\xFF"s, false, 0, 0},
                      {"\0\0\0\x03\xFF"s, true, 3, 3}}; // bits after the last do not count
    for (auto const& [bytes, isLoaded, count, ones] : rows) {
        m_scratch.SetBytes(bytes);
        ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead));
        VBitString bits(5);
        EXPECT_EQ(bits.Serialize(m_file), isLoaded);
        EXPECT_EQ(bits.Count(), count);
        EXPECT_EQ(bits.CountOnes(), ones);
    }
}

} // namespace
