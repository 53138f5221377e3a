#include "foundation/numerics/VFloatVector.h"

#include "foundation/core/VException.h"
#include "tests/numerics/FloatVectors.h"
#include "tests/support/SavedForms.h"

namespace {

using namespace VFoundation;
using namespace testing_support;
using std::string_literals::operator""s;
using VFloatVectorTest = SavedForms;

TEST(VFloatVector, HoldsZerosUntilTheyAreSet) {
    VFloatVector vector(3);
    EXPECT_TRUE(vector.SetElementAtIndex(2.5F, 2));
    for (long const index : {3L, -1L}) {
        EXPECT_FALSE(vector.SetElementAtIndex(1, index));
        EXPECT_EQ(vector.ElementAtIndex(index), 0.0F);
    }
    vector.SetCount(5);
    EXPECT_TRUE(vector.IsEqual(VectorOf({0, 0, 2.5F, 0, 0})));
    EXPECT_FALSE(VectorOf({0}).IsEqual(VectorOf({-0.0F}))) << "bit for bit";
    vector.SetCount(2);
    vector.SetCount(3);
    EXPECT_TRUE(vector.IsEqual(VFloatVector(3))) << "what was cut off is forgotten";
    EXPECT_THROW(vector.SetCount(VFloatVector::kMaxCount + 1), VException);
    EXPECT_EQ(vector.Count(), 3);
    vector.SetCount(-4);
    EXPECT_STREQ(vector.Description().CString(), "[VFloatVector] Count: 0");
}

TEST(VFloatVector, CalculatesElementByElement) {
    for (long const count : {0L, 1L, 7L, 8L, 9L, 100L}) { // around what is folded at a time
        VFloatVector a(count);
        double sum = 0;
        for (long i = 0; i < count; ++i) {
            a.SetElementAtIndex(static_cast<float>((i * 7 + 3) % 11 - 5), i);
            sum += a.ElementAtIndex(i);
        }
        EXPECT_EQ(a.Sum(), sum);
        EXPECT_EQ(a.Minimum(), count ? *std::min_element(a.Elements(), a.Elements() + count) : kInfinity);
        EXPECT_EQ(a.Maximum(), count ? *std::max_element(a.Elements(), a.Elements() + count) : -kInfinity);
        VFloatVector b(a);
        b.Scale(2);
        EXPECT_TRUE(b.Add(a));
        EXPECT_TRUE(b.Multiply(a));
        for (long i = 0; i < count; ++i) {
            EXPECT_EQ(b.ElementAtIndex(i), 3 * a.ElementAtIndex(i) * a.ElementAtIndex(i));
        }
        VFloatVector const other(count + 1);
        EXPECT_FALSE(a.Add(other));
        EXPECT_FALSE(a.Multiply(other));
        EXPECT_TRUE(a.Add(a));
        EXPECT_EQ(a.Sum(), 2 * sum);
    }
    VFloatVector many(1 << 20);
    many.Fill(0.1F);
    EXPECT_EQ(many.Sum(), 1048576 * double{0.1F}) << "in single precision the third digit is wrong";
    EXPECT_EQ(VectorOf({kNaN, 3, kNaN, 2, kNaN, kNaN, kNaN, kNaN, kNaN, 5}).Minimum(), 2.0F);
}

TEST_F(VFloatVectorTest, TravelsThroughBothForms) {
    ExpectRoundTrips(VFloatVector(), VFloatVector(1), R"(<VFloatVector count="0" />)");
    VFloatVector vector = VectorOf({0, -0.0F, 0.1F, -123.456F, 16777213, 1e-45F, kLargest, kInfinity, kNaN});
    ExpectRoundTrips(vector, VFloatVector(),
                     R"(<VFloatVector count="9">0 -0 0.1 -123.456 16777213 1e-45 3.4028235e+38 inf nan)"
                     "</VFloatVector>");
    vector = VectorOf({1, 0.1F, -2.5F});
    SaveChunk(vector);
    EXPECT_EQ(m_scratch.Bytes(), "OBJT\0\0\0\x10\0\0\0\x03\x3F\x80\0\0\x3D\xCC\xCC\xCD\xC0\x20\0\0"s);
}

TEST(VFloatVector, TellsThatItIsNotSavedWhole) {
    VAIFile full;
    ASSERT_TRUE(full.Open("/dev/full", VAIFile::kWrite));
    EXPECT_TRUE(VFloatVector(1).Serialize(full)) << "still in memory";
    EXPECT_FALSE(VFloatVector(100000).Serialize(full));
}

TEST_F(VFloatVectorTest, IsEmptyAfterDamagedFiles) {
    VFloatVector vector;
    EXPECT_TRUE(ReadXML(vector, "<VFloatVector count='2'>\n 1\t\n2\n</VFloatVector>"));
    EXPECT_TRUE(vector.IsEqual(VectorOf({1, 2})));
    for (std::string const body :
         {">", " count='2'>1", " count='1'>1 2", " count='2'>1 x", " count='2'>1,2", " count='2'>1-2",
          " count='1'>1e99", " count='-1'>", " count='1'>0x1", ">1"}) {
        vector = VectorOf({7});
        EXPECT_FALSE(ReadXML(vector, "<VFloatVector" + body + "</VFloatVector>")) << body;
        EXPECT_EQ(vector.Count(), 0) << body;
    }
    for (std::string const& count : {"\0\0\0\4"s, "\x7F\xFF\xFF\xFF"s, "\xFF\xFF\xFF\xFF"s}) {
        m_scratch.SetBytes("OBJT\0\0\0\x10"s + count + std::string(12, '\0'));
        for (long const mode : {0L, VAIFile::kChunkSafe}) {
            vector = VectorOf({7});
            EXPECT_FALSE(ReadChunk(vector, mode));
            EXPECT_EQ(vector.Count(), 0);
        }
    }
}

} // namespace
