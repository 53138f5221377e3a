// Float vectors, curves and windows: the arithmetic, and both files' forms.

#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/numerics/VFloatVector.h"
#include "foundation/numerics/VFloatVectorMapXY.h"
#include "foundation/numerics/VWindowFunction.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace VFoundation;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

VFloatVector VectorOf(std::initializer_list<float> elements) {
    VFloatVector vector(static_cast<long>(elements.size()));
    std::copy(elements.begin(), elements.end(), vector.Elements());
    return vector;
}

bool Same(VObject const& a, VObject const& b) {
    return a.IsEqual(b);
}

TEST(FloatVector, HoldsZerosUntilTheyAreSet) {
    VFloatVector vector(3);
    EXPECT_TRUE(Same(vector, VectorOf({0, 0, 0})));
    EXPECT_TRUE(vector.SetElementAtIndex(2.5F, 2));
    EXPECT_FALSE(vector.SetElementAtIndex(1, 3));
    EXPECT_FALSE(vector.SetElementAtIndex(1, -1));
    EXPECT_EQ(vector.ElementAtIndex(2), 2.5F);
    EXPECT_EQ(vector.ElementAtIndex(3), 0.0F);
    vector.SetCount(5);
    EXPECT_TRUE(Same(vector, VectorOf({0, 0, 2.5F, 0, 0})));
    vector.SetCount(2);
    vector.SetCount(3);
    EXPECT_TRUE(Same(vector, VFloatVector(3))); // what was cut off is forgotten
    vector.SetCount(-4);
    EXPECT_EQ(vector.Count(), 0);
    EXPECT_STREQ(VectorOf({1}).Description().CString(), "[VFloatVector] Count: 1");
    VFloatVector kept = VectorOf({7});
    EXPECT_THROW(kept.SetCount(VFloatVector::kMaxCount + 1), VException);
    EXPECT_THROW(kept.SetCount(std::numeric_limits<long>::max()), VException);
    EXPECT_TRUE(Same(kept, VectorOf({7})));
}

TEST(FloatVector, CalculatesElementByElement) {
    for (long const count : {0L, 1L, 7L, 8L, 9L, 100L}) { // around what is folded at a time
        VFloatVector a(count);
        double sum = 0;
        for (long i = 0; i < count; ++i) {
            a.SetElementAtIndex(static_cast<float>((i * 7 + 3) % 11 - 5), i);
            sum += a.ElementAtIndex(i);
        }
        VFloatVector b(a);
        EXPECT_EQ(a.Sum(), sum);
        EXPECT_EQ(a.Minimum(), count ? *std::min_element(a.Elements(), a.Elements() + count) : kInfinity);
        EXPECT_EQ(a.Maximum(), count ? *std::max_element(a.Elements(), a.Elements() + count) : -kInfinity);
        b.Scale(2);
        EXPECT_TRUE(b.Add(a));
        EXPECT_TRUE(b.Multiply(a));
        for (long i = 0; i < count; ++i) {
            EXPECT_EQ(b.ElementAtIndex(i), 3 * a.ElementAtIndex(i) * a.ElementAtIndex(i));
        }
        EXPECT_TRUE(a.Add(a));
        EXPECT_EQ(a.Sum(), 2 * sum);
        a.Fill(0.5F);
        EXPECT_EQ(a.Sum(), 0.5 * static_cast<double>(count));
        VFloatVector const other(count + 1);
        EXPECT_FALSE(a.Add(other));
        EXPECT_FALSE(a.Multiply(other));
    }
    VFloatVector millions(1 << 20);
    millions.Fill(0.1F);
    EXPECT_EQ(millions.Sum(), 1048576 * double{0.1F}); // a sum in single precision is off in the third digit
    EXPECT_EQ(VectorOf({kNaN, 3, kNaN, 2, kNaN, kNaN, kNaN, kNaN, kNaN, 5}).Minimum(), 2.0F);
    EXPECT_EQ(VectorOf({kNaN}).Maximum(), -kInfinity);
}

TEST(FloatVector, IsEqualBitForBit) {
    VFloatVector const vector = VectorOf({1, kNaN});
    auto const copy = VObjectRef<VFloatVector>::Adopt(vector.Copy());
    EXPECT_TRUE(Same(vector, *copy));
    copy->SetElementAtIndex(1, 1);
    EXPECT_FALSE(Same(vector, *copy));
    EXPECT_FALSE(Same(VectorOf({0}), VectorOf({-0.0F})));
    EXPECT_FALSE(Same(VectorOf({}), VFloatVectorMapXY()));
}

TEST(FloatVectorMap, KeepsItsPointsInOrder) {
    VFloatVectorMapXY curve;
    EXPECT_EQ(curve.ValueAt(3), 0.0F);
    for (float const x : {4.0F, 0.0F, 2.0F, 8.0F}) {
        EXPECT_TRUE(curve.AddPoint(x, x * 10));
    }
    EXPECT_TRUE(curve.AddPoint(2, -20)); // takes the place of the point there
    EXPECT_TRUE(Same(curve.X(), VectorOf({0, 2, 4, 8})));
    EXPECT_TRUE(Same(curve.Y(), VectorOf({0, -20, 40, 80})));
    for (float const bad : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_FALSE(curve.AddPoint(bad, 0));
        EXPECT_FALSE(curve.AddPoint(0, bad));
        EXPECT_FALSE(curve.SetPoints(VectorOf({bad}), VectorOf({0})));
    }
    EXPECT_FALSE(curve.SetPoints(VectorOf({1, 1}), VectorOf({0, 1})));
    EXPECT_FALSE(curve.SetPoints(VectorOf({2, 1}), VectorOf({0, 1})));
    EXPECT_FALSE(curve.SetPoints(VectorOf({1, 2}), VectorOf({0})));
    EXPECT_EQ(curve.Count(), 4);
    EXPECT_TRUE(curve.SetPoints(VectorOf({1, 2}), VectorOf({5, 6})));
    EXPECT_EQ(curve.Count(), 2);
    curve.RemoveAllPoints();
    EXPECT_EQ(curve.Count(), 0);
}

TEST(FloatVectorMap, IsStraightBetweenPointsAndLevelBeyond) {
    VFloatVectorMapXY curve;
    constexpr float kLargest = std::numeric_limits<float>::max();
    ASSERT_TRUE(curve.SetPoints(VectorOf({-kLargest, 0, 2, 4}), VectorOf({-kLargest, 1, 2, 0})));
    VFloatVector values = VectorOf({-kInfinity, -kLargest, -kLargest / 2, 0, 1, 2, 2.5F, 4, 5, kInfinity});
    curve.Apply(values);
    EXPECT_TRUE(Same(values, VectorOf({-kLargest, -kLargest, -kLargest / 2, 1, 1.5F, 2, 1.5F, 0, 0, 0})));
    EXPECT_TRUE(std::isnan(curve.ValueAt(kNaN)));
}

TEST(WindowFunction, HasItsValues) {
    struct {
        VWindowFunction::eType type;
        double end, quarter;
    } const windows[] = {{VWindowFunction::eRectangular, 1, 1},
                         {VWindowFunction::eHann, 0, 0.5},
                         {VWindowFunction::eHamming, 0.08, 0.54},
                         {VWindowFunction::eBlackman, 0, 0.34}};
    for (auto const& [type, end, quarter] : windows) {
        VWindowFunction const window(type);
        EXPECT_NEAR(window.ValueAt(0, 9), end, 1e-12);
        EXPECT_NEAR(window.ValueAt(2, 9), quarter, 1e-12);
        EXPECT_NEAR(window.ValueAt(4, 9), 1.0, 1e-12);
        EXPECT_EQ(window.ValueAt(9, 9), 0.0);
        EXPECT_EQ(window.ValueAt(-1, 9), 0.0);
        EXPECT_EQ(window.ValueAt(0, 1), 1.0);
        for (long const count : {0L, 1L, 2L, 9L, 10L}) {
            VFloatVector samples(count);
            samples.Fill(2);
            window.Apply(samples);
            for (long i = 0; i < count; ++i) {
                EXPECT_EQ(samples.ElementAtIndex(i), 2 * static_cast<float>(window.ValueAt(i, count)));
                EXPECT_EQ(samples.ElementAtIndex(i), samples.ElementAtIndex(count - 1 - i));
                EXPECT_GE(samples.ElementAtIndex(i), 0.0F);
            }
        }
    }
}

/// Both kinds of file.
class NumericsFiles : public testing::Test {
  protected:
    NumericsFiles() {
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory);
        for (VClass* (*const theClass)() : {&VFloatVector::TheClass, &VFloatVectorMapXY::TheClass,
                                            &VWindowFunction::TheClass, &VXMLFile::TheClass}) {
            theClass();
        }
    }
    ~NumericsFiles() override { VXMLFile::ClearIXMLFileIOFactory(); }

    static VString XMLOf(VObject const& object) {
        VString text;
        VXMLFile file;
        EXPECT_TRUE(file.WriteFileToString(text, "Root"));
        EXPECT_TRUE(file.WriteObject("object", object));
        EXPECT_TRUE(file.CloseFile());
        return text;
    }
    /// What the object's own reading says.
    static bool ReadXML(VString const& text, VObject& object) {
        VXMLFile file;
        EXPECT_TRUE(file.LoadFile("text", reinterpret_cast<unsigned char const*>(text.CString()),
                                  text.Length(), "Root"));
        EXPECT_TRUE(file.OpenFirstChildElement(object.ClassName()));
        return object.SerializeAsXML(file);
    }
    void WriteChunk(VObject& object, long mode) const {
        VAIFile file;
        ASSERT_TRUE(file.Open(m_scratch.Path(), VAIFile::kWrite | mode) && file.OpenChunk("TEST"));
        EXPECT_TRUE(object.Serialize(file));
        ASSERT_TRUE(file.CloseChunk() && file.Close());
    }
    bool ReadChunk(VObject& object, long mode) const {
        VAIFile file;
        unsigned long id = 0;
        unsigned long length = 0;
        EXPECT_TRUE(file.Open(m_scratch.Path(), VAIFile::kRead | mode) && file.ReadChunkHeader(&id, &length));
        return object.Serialize(file);
    }

    void ExpectRoundTrips(VObject& object) const {
        auto const read = VObjectRef<VObject>::Adopt(object.Class()->NewInstance());
        EXPECT_TRUE(ReadXML(XMLOf(object), *read));
        EXPECT_TRUE(read->IsEqual(object)) << XMLOf(object).CString();
        for (long const mode : {0L, VAIFile::kLittleEndian, VAIFile::kChunkSafe}) {
            WriteChunk(object, mode);
            auto const again = VObjectRef<VObject>::Adopt(object.Class()->NewInstance());
            EXPECT_TRUE(ReadChunk(*again, mode));
            EXPECT_TRUE(again->IsEqual(object));
        }
    }

    testing_support::ScratchFile m_scratch;
};

TEST_F(NumericsFiles, BringEverythingBack) {
    constexpr float kTiny = std::numeric_limits<float>::denorm_min();
    VFloatVector vector =
        VectorOf({0, -0.0F, 1, 0.1F, -123.456F, 16777213, kTiny, 1e38F, kInfinity, -kInfinity, kNaN});
    VFloatVector none;
    VFloatVectorMapXY curve;
    curve.SetPoints(VectorOf({-1, 0.3F, 7}), VectorOf({3, 1, 4}));
    VFloatVectorMapXY noPoints;
    VWindowFunction window(VWindowFunction::eBlackman);
    VWindowFunction plain;
    for (VObject* const object :
         std::initializer_list<VObject*>{&vector, &none, &curve, &noPoints, &window, &plain}) {
        ExpectRoundTrips(*object);
    }
}

TEST_F(NumericsFiles, HaveTheseForms) {
    VFloatVector vector = VectorOf({1, 0.1F, -2.5F});
    EXPECT_STREQ(XMLOf(vector).CString(),
                 "<Root><VFloatVector name=\"object\" count=\"3\">1 0.1 -2.5</VFloatVector></Root>");
    EXPECT_STREQ(XMLOf(VWindowFunction(VWindowFunction::eHann)).CString(),
                 "<Root><VWindowFunction name=\"object\" type=\"Hann\" /></Root>");
    WriteChunk(vector, 0);
    using std::string_literals::operator""s;
    EXPECT_EQ(m_scratch.Bytes(), "TEST\0\0\0\x10\0\0\0\x03\x3F\x80\0\0\x3D\xCC\xCC\xCD\xC0\x20\0\0"s);
}

TEST_F(NumericsFiles, GiveNothingWhenTheyAreDamaged) {
    for (char const* const body :
         {"", " count=\"2\">1", " count=\"1\">1 2", " count=\"2\">1 x", " count=\"2\">1,2",
          " count=\"1\">1e99", " count=\"-1\">", " count=\"1\">0x1", ">1"}) {
        VFloatVector vector = VectorOf({7});
        std::string const open = *body ? body : ">";
        EXPECT_FALSE(
            ReadXML(VString(("<Root><VFloatVector" + open + "</VFloatVector></Root>").c_str()), vector))
            << body;
        EXPECT_EQ(vector.Count(), 0) << body;
    }
    VFloatVector loose;
    EXPECT_TRUE(ReadXML("<Root><VFloatVector count=\"2\">\n 1\t\n2\n</VFloatVector></Root>", loose));
    EXPECT_TRUE(Same(loose, VectorOf({1, 2})));

    VWindowFunction window(VWindowFunction::eHann);
    EXPECT_FALSE(ReadXML("<Root><VWindowFunction type=\"Bartlett\"/></Root>", window));
    EXPECT_EQ(window.Type(), VWindowFunction::eRectangular);

    // A curve that runs backwards.
    VFloatVectorMapXY curve;
    curve.AddPoint(1, 1);
    EXPECT_FALSE(ReadXML("<Root><VFloatVectorMapXY><VFloatVector name=\"x\" count=\"2\">2 1</VFloatVector>"
                         "<VFloatVector name=\"y\" count=\"2\">2 1</VFloatVector></VFloatVectorMapXY></Root>",
                         curve));
    EXPECT_EQ(curve.Count(), 0);

    VFloatVector whole = VectorOf({1, 2, 3});
    WriteChunk(whole, 0);
    std::string const bytes = m_scratch.Bytes();
    for (int const count : {4, 0x7FFFFFFF, -1}) {
        std::string damaged = bytes;
        for (std::size_t i = 0; i < 4; ++i) {
            damaged[8 + i] = static_cast<char>(count >> 8 * (3 - i));
        }
        m_scratch.SetBytes(damaged);
        for (long const mode : {0L, VAIFile::kChunkSafe}) {
            VFloatVector vector = VectorOf({7});
            EXPECT_FALSE(ReadChunk(vector, mode)) << count;
            EXPECT_EQ(vector.Count(), 0);
        }
    }
}

} // namespace
