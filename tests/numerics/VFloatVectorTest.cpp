// Float vectors, curves and windows: the arithmetic, and the forms they take in files.

#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/numerics/VFloatVector.h"
#include "foundation/numerics/VFloatVectorMapXY.h"
#include "foundation/numerics/VWindowFunction.h"
#include "foundation/persistence/VAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

using namespace VFoundation;
using std::string_literals::operator""s;

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kLargest = std::numeric_limits<float>::max();

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
    EXPECT_TRUE(vector.SetElementAtIndex(2.5F, 2));
    EXPECT_FALSE(vector.SetElementAtIndex(1, 3) || vector.SetElementAtIndex(1, -1));
    vector.SetCount(5);
    EXPECT_TRUE(Same(vector, VectorOf({0, 0, 2.5F, 0, 0})));
    EXPECT_EQ(vector.ElementAtIndex(2) + vector.ElementAtIndex(5) + vector.ElementAtIndex(-1), 2.5F);
    EXPECT_FALSE(Same(VectorOf({0}), VectorOf({-0.0F}))); // bit for bit
    vector.SetCount(2);
    vector.SetCount(3);
    EXPECT_TRUE(Same(vector, VFloatVector(3))); // what was cut off is forgotten
    EXPECT_THROW(vector.SetCount(VFloatVector::kMaxCount + 1), VException);
    EXPECT_EQ(vector.Count(), 3);
    vector.SetCount(-4);
    EXPECT_STREQ(vector.Description().CString(), "[VFloatVector] Count: 0");
}

TEST(FloatVector, CalculatesElementByElement) {
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
        EXPECT_TRUE(b.Add(a) && b.Multiply(a));
        for (long i = 0; i < count; ++i) {
            EXPECT_EQ(b.ElementAtIndex(i), 3 * a.ElementAtIndex(i) * a.ElementAtIndex(i));
        }
        VFloatVector const other(count + 1);
        EXPECT_FALSE(a.Add(other) || a.Multiply(other));
        EXPECT_TRUE(a.Add(a));
        EXPECT_EQ(a.Sum(), 2 * sum);
    }
    VFloatVector many(1 << 20);
    many.Fill(0.1F);
    EXPECT_EQ(many.Sum(), 1048576 * double{0.1F}); // in single precision the third digit is wrong
    EXPECT_EQ(VectorOf({kNaN, 3, kNaN, 2, kNaN, kNaN, kNaN, kNaN, kNaN, 5}).Minimum(), 2.0F);
}

TEST(FloatVectorMap, IsStraightBetweenItsPointsAndLevelBeyond) {
    VFloatVectorMapXY curve;
    EXPECT_EQ(curve.ValueAt(3), 0.0F);
    for (float const x : {4.0F, 0.0F, 2.0F, 8.0F}) {
        EXPECT_TRUE(curve.AddPoint(x, x * 10));
    }
    EXPECT_TRUE(curve.AddPoint(2, -20)); // takes the place of the point there
    EXPECT_TRUE(Same(curve.X(), VectorOf({0, 2, 4, 8})) && Same(curve.Y(), VectorOf({0, -20, 40, 80})));
    for (float const bad : {kNaN, kInfinity, -kInfinity}) {
        EXPECT_FALSE(curve.AddPoint(bad, 0) || curve.AddPoint(0, bad));
        EXPECT_FALSE(curve.SetPoints(VectorOf({bad}), VectorOf({0})));
    }
    EXPECT_FALSE(curve.SetPoints(VectorOf({1, 1}), VectorOf({0, 1})));
    EXPECT_FALSE(curve.SetPoints(VectorOf({1, 2}), VectorOf({0})));
    EXPECT_EQ(curve.Count(), 4);
    EXPECT_TRUE(curve.SetPoints(VectorOf({-kLargest, 0, 2, 4}), VectorOf({-kLargest, 1, 2, 0})));
    VFloatVector values = VectorOf({-kInfinity, -kLargest, -kLargest / 2, 0, 1, 2, 2.5F, 4, kInfinity});
    curve.Apply(values);
    EXPECT_TRUE(Same(values, VectorOf({-kLargest, -kLargest, -kLargest / 2, 1, 1.5F, 2, 1.5F, 0, 0})));
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
        EXPECT_EQ(window.ValueAt(9, 9) + window.ValueAt(-1, 9) + window.ValueAt(0, 1), 1.0);
        for (long const count : {0L, 1L, 2L, 9L, 10L}) {
            VFloatVector samples(count);
            samples.Fill(2);
            window.Apply(samples);
            for (long i = 0; i < count; ++i) {
                EXPECT_EQ(samples.ElementAtIndex(i),
                          2 * static_cast<float>(window.ValueAt(count - 1 - i, count)));
            }
        }
    }
}

class NumericsFiles : public testing::Test {
  protected:
    NumericsFiles() { InitializeLibrary(false); }
    ~NumericsFiles() override { UninitializeLibrary(true, false, true); }

    static VString XMLOf(VObject const& object) {
        VString text;
        VXMLFile file;
        EXPECT_TRUE(file.WriteFileToString(text, "Root") && file.WriteObject("o", object) &&
                    file.CloseFile());
        return text;
    }
    /// What the object says to being read.
    static bool ReadXML(VString const& text, VObject& object) {
        VXMLFile file;
        auto const* const bytes = reinterpret_cast<unsigned char const*>(text.CString());
        return file.LoadFile("text", bytes, text.Length(), "Root") &&
               file.OpenFirstChildElement(object.ClassName()) && object.SerializeAsXML(file);
    }
    void WriteChunk(VObject& object, long mode) const {
        VAIFile file;
        EXPECT_TRUE(file.Open(m_scratch.Path(), VAIFile::kWrite | mode) && file.OpenChunk("TEST"));
        EXPECT_TRUE(object.Serialize(file) && file.CloseChunk() && file.Close());
    }
    bool ReadChunk(VObject& object, long mode) const {
        VAIFile file;
        unsigned long header[2];
        return file.Open(m_scratch.Path(), VAIFile::kRead | mode) &&
               file.ReadChunkHeader(&header[0], &header[1]) && object.Serialize(file);
    }

    testing_support::ScratchFile m_scratch;
};

TEST_F(NumericsFiles, BringEverythingBack) {
    VFloatVector vector = VectorOf({0, -0.0F, 0.1F, -123.456F, 16777213, 1e-45F, kLargest, kInfinity, kNaN});
    VFloatVector none;
    VFloatVectorMapXY curve;
    curve.SetPoints(VectorOf({-1, 0.3F, 7}), VectorOf({3, 1, 4}));
    VWindowFunction window(VWindowFunction::eBlackman);
    for (VObject* const object : std::initializer_list<VObject*>{&vector, &none, &curve, &window}) {
        auto const read = VObjectRef<VObject>::Adopt(object->Class()->NewInstance());
        EXPECT_TRUE(ReadXML(XMLOf(*object), *read) && read->IsEqual(*object)) << XMLOf(*object).CString();
        for (long const mode : {0L, VAIFile::kLittleEndian, VAIFile::kChunkSafe}) {
            WriteChunk(*object, mode);
            auto const again = VObjectRef<VObject>::Adopt(object->Class()->NewInstance());
            EXPECT_TRUE(ReadChunk(*again, mode) && again->IsEqual(*object)) << object->ClassName() << mode;
        }
    }
    VFloatVector plain = VectorOf({1, 0.1F, -2.5F});
    EXPECT_STREQ(XMLOf(plain).CString(),
                 "<Root><VFloatVector name=\"o\" count=\"3\">1 0.1 -2.5</VFloatVector></Root>");
    EXPECT_STREQ(XMLOf(window).CString(), "<Root><VWindowFunction name=\"o\" type=\"Blackman\" /></Root>");
    WriteChunk(plain, 0);
    EXPECT_EQ(m_scratch.Bytes(), "TEST\0\0\0\x10\0\0\0\x03\x3F\x80\0\0\x3D\xCC\xCC\xCD\xC0\x20\0\0"s);
}

TEST_F(NumericsFiles, GiveNothingWhenTheyAreDamaged) {
    VFloatVector vector;
    EXPECT_TRUE(ReadXML("<Root><VFloatVector count=\"2\">\n 1\t\n2\n</VFloatVector></Root>", vector));
    EXPECT_TRUE(Same(vector, VectorOf({1, 2})));
    for (std::string const body :
         {">", " count=\"2\">1", " count=\"1\">1 2", " count=\"2\">1 x", " count=\"2\">1,2",
          " count=\"1\">1e99", " count=\"-1\">", " count=\"1\">0x1", ">1"}) {
        vector = VectorOf({7});
        EXPECT_FALSE(ReadXML(("<Root><VFloatVector" + body + "</VFloatVector></Root>").c_str(), vector))
            << body;
        EXPECT_EQ(vector.Count(), 0) << body;
    }
    VWindowFunction window(VWindowFunction::eHann);
    EXPECT_FALSE(ReadXML("<Root><VWindowFunction type=\"Bartlett\"/></Root>", window));
    EXPECT_EQ(window.Type(), VWindowFunction::eRectangular);
    VFloatVectorMapXY curve;
    curve.AddPoint(1, 1);
    EXPECT_FALSE(ReadXML("<Root><VFloatVectorMapXY><VFloatVector name='x' count='2'>2 1</VFloatVector>"
                         "<VFloatVector name='y' count='2'>2 1</VFloatVector></VFloatVectorMapXY></Root>",
                         curve)); // backwards
    EXPECT_EQ(curve.Count(), 0);
    for (std::string const& count : {"\0\0\0\4"s, "\x7F\xFF\xFF\xFF"s, "\xFF\xFF\xFF\xFF"s}) {
        m_scratch.SetBytes("TEST\0\0\0\x10"s + count + std::string(12, '\0'));
        for (long const mode : {0L, VAIFile::kChunkSafe}) {
            vector = VectorOf({7});
            EXPECT_FALSE(ReadChunk(vector, mode));
            EXPECT_EQ(vector.Count(), 0);
        }
    }
}

} // namespace
