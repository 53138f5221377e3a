#include "foundation/strings/values/VBitString.h"
#include "foundation/strings/values/VDate.h"
#include "foundation/strings/values/VDev.h"
#include "foundation/strings/values/VPDFConnection.h"
#include "foundation/strings/values/VPoint.h"
#include "foundation/strings/values/VRange.h"
#include "foundation/strings/values/VRect.h"
#include "foundation/strings/values/VSize.h"
#include "foundation/strings/values/VTimeRange.h"
#include "foundation/strings/values/VURL.h"
#include "foundation/strings/values/VValue.h"
#include "tests/support/SavedForms.h"
#include "tests/support/Counted.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <ctime>
#include <sstream>
#include <string>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using ValueObjects = testing_support::SavedForms;

VBitString Bits(char const* text) {
    VBitString bits;
    EXPECT_TRUE(bits.SetFromString(text));
    return bits;
}

TEST_F(ValueObjects, TravelThroughBothForms) {
    ExpectRoundTrips(VPoint(SPoint{INT32_MIN, INT32_MAX}), VPoint());
    ExpectRoundTrips(VSize(SSize{1, -2}), VSize());
    ExpectRoundTrips(VRect(SRect{1, 2, 3, 4}), VRect());
    ExpectRoundTrips(VDate(LLONG_MIN), VDate());
    ExpectRoundTrips(VRange(-5, INT32_MAX), VRange(1, 1));
    ExpectRoundTrips(VTimeRange(-0.25, 1e300), VTimeRange());
    ExpectRoundTrips(VURL("http://a/?<&>'\""), VURL("b"));
    ExpectRoundTrips(VURL(), VURL("b"));
    VPDFConnection named;
    named.SetName("");
    named.SetPage(7);
    ExpectRoundTrips(VPDFConnection(), named);
    ExpectRoundTrips(named, VPDFConnection());
    ExpectRoundTrips(Bits("1000000001"), VBitString(3));
    ExpectRoundTrips(VBitString(), Bits("1"));
}

TEST_F(ValueObjects, StandInXMLAsAttributes) {
    EXPECT_EQ(XMLOf(VRect(SRect{1, 2, 3, 4})),
              "<R><VRect left=\"1\" top=\"2\" right=\"3\" bottom=\"4\" /></R>");
    EXPECT_EQ(XMLOf(VPDFConnection()),
              "<R><VPDFConnection connection_name=\"Unconnected\" connection_page=\"0\" /></R>");
    VValue value;
    value.Value().SetValueToChar('A');
    EXPECT_EQ(XMLOf(value), "<R><VValue type=\"char\" value=\"65\" /></R>");
    VPoint point(SPoint{1, 2});
    ReadXML(point, "<R><VPoint y='5'/></R>");
    EXPECT_STREQ(point.Description().CString(), "[VPoint] x: 1, y: 5");
    VRange range;
    ReadXML(range, "<R><VRange location='-1' length='-7'/></R>");
    EXPECT_TRUE(range == VRange(-1, 0)) << "a damaged file makes no damaged range";
    EXPECT_STREQ(VTimeRange(0.5, 2).Description().CString(), "[VTimeRange] start: 0.5, duration: 2");
}

TEST(Date, IsWrittenAsTheCLibraryWouldInEnglish) {
    for (long long const seconds : {0LL, -1LL, 951'782'400LL, 1'794'784'079LL, 253'402'200'000LL}) {
        std::time_t const time{seconds};
        std::tm local{};
        char expected[64] = {};
        ::localtime_r(&time, &local);
        EXPECT_EQ(VDate(seconds).AsString().CString() + std::string("\n"), ::asctime_r(&local, expected));
    }
    EXPECT_STREQ(VDate(LLONG_MAX).AsString().CString(), "") << "not in the calendar";
    EXPECT_EQ(VDate::NowAsString().Length(), 24U);
    EXPECT_TRUE(VDate(1) < VDate::Now() && VDate::Now() <= VDate(std::time(nullptr)));
}

TEST(Range, StaysInsideItsNumbers) {
    EXPECT_EQ(VRange(INT32_MAX - 3, 5).Length(), 3);
    EXPECT_EQ(VRange(INT32_MIN, INT32_MAX).End(), -1);
    EXPECT_EQ(VRange(3, -5).Length(), 0);
    EXPECT_TRUE(VRange(INT32_MIN, 1).Union(VRange(INT32_MAX - 1, 1)) == VRange(INT32_MIN, INT32_MAX));
    EXPECT_TRUE(VRange(0, 4).Union(VRange(8, 2)) == VRange(0, 10));
    EXPECT_TRUE(VRange(0, 4).Union(VRange(99, 0)) == VRange(0, 4));
    EXPECT_TRUE(VRange(0, 4).Intersection(VRange(2, 9)) == VRange(2, 2));
    EXPECT_TRUE(VRange(1, 4).Intersection(VRange(5, 9)) == VRange());
    EXPECT_TRUE(VRange(-2, 2).Contains(-2) && !VRange(-2, 2).Contains(0) && !VRange(4, 0).Contains(4));
    EXPECT_EQ(VTimeRange(1e308, HUGE_VAL).End(), DBL_MAX);
    EXPECT_EQ(VTimeRange(-HUGE_VAL, -1).Start(), -DBL_MAX);
    EXPECT_TRUE(VTimeRange(std::nan(""), std::nan("")) == VTimeRange());
    EXPECT_TRUE(VTimeRange(1e300, 1).IsEmpty()) << "a second is nothing there";
    EXPECT_EQ(VTimeRange(-DBL_MAX, 1e300).Union(VTimeRange(1e308, 1e300)).Duration(), DBL_MAX);
    EXPECT_FALSE(VTimeRange(0, 1).Contains(1) || VTimeRange(0, 1).Contains(std::nan("")));
}

TEST(URL, IsSplitStrictly) {
    // scheme|host|port|path|query
    char const* const valid[][2] = {
        {"http://user:pw@example.org:8080/a/b?q=1?#top", "http|example.org|8080|/a/b|q=1?"},
        {"HTTP://[::1]:80", "HTTP|[::1]|80||"},
        {"x://[1:2:3:4:5:6:7:8]/", "x|[1:2:3:4:5:6:7:8]|-1|/|"},
        {"x://[1:2:3:4:5:6:1.2.3.4]", "x|[1:2:3:4:5:6:1.2.3.4]|-1||"},
        {"x://[::ffff:192.0.2.255]/", "x|[::ffff:192.0.2.255]|-1|/|"},
        {"x://[v1.a:b]", "x|[v1.a:b]|-1||"},
        {"file:///etc/hosts", "file||-1|/etc/hosts|"},
        {"mailto:a@b.c", "mailto||-1|a@b.c|"},
        {"a+-.1:%41%fF", "a+-.1||-1|%41%fF|"},
        {"http://h:", "http|h|-1||"},
        {"http://h?a/b", "http|h|-1||a/b"},
        {"http://h:65535#a?b", "http|h|65535||"}};
    for (auto const& [text, parts] : valid) {
        VURL const url(text);
        EXPECT_TRUE(url.IsValid()) << text;
        VString split;
        split.Format("%s|%s|%li|%s|%s", url.Scheme().CString(), url.Host().CString(), url.Port(),
                     url.Path().CString(), url.Query().CString());
        EXPECT_STREQ(split.CString(), parts) << text;
    }
    std::istringstream invalid(
        R"( no-scheme /a 1a:b :b a_b:c http://h/%4 http://h/%zz http://h:65536/ http://h:1x
        http://[::1 http://[::1]x http://[1::2::3] http://[:1] http://[1:2:3:4:5:6:7] http://[1:2:3:4:5:6:7:8:9]
        http://[::1.2.3.256] http://[::1.2.3] http://[1.2.3.4::] http://[12345::] http://[v.a] http://[v1.]
        http://a@b@c/ http://a[b/ http://h/\ http://h/#a#b http://h/?" http://h/é )");
    for (std::string text; invalid >> text;) {
        EXPECT_FALSE(VURL(text.c_str()).IsValid()) << text;
        EXPECT_TRUE(VURL(text.c_str()).Scheme().IsEmpty() && VURL(text.c_str()).Port() == -1) << text;
    }
    EXPECT_FALSE(VURL().IsValid() || VURL("a b:c").IsValid() || VURL("http://h/\n").IsValid());
}

TEST(BitString, SetsCountsAndCombines) {
    VBitString bits(70);
    EXPECT_TRUE(bits.SetBit(69, true) && bits.SetBit(0, true) && bits.SetBit(0, true) && bits.FlipBit(8));
    EXPECT_FALSE(bits.SetBit(70, true) || bits.FlipBit(-1) || bits.GetBit(70) || bits.GetBit(-1));
    EXPECT_EQ(bits.CountOnes(), 3);
    bits.SetCount(9);
    bits.SetCount(70);
    EXPECT_EQ(bits.CountOnes(), 2) << "what was cut off is gone";
    EXPECT_EQ(VBitString(-1).Count(), 0);

    VBitString combined = Bits("111111111");
    combined.And(Bits("1011"));
    combined.Or(Bits("0000000110111"));
    combined.Xor(Bits("11"));
    EXPECT_STREQ(combined.AsString().CString(), "011100011");
    EXPECT_FALSE(combined.SetFromString("12") || combined.SetFromString(nullptr));
    EXPECT_EQ(combined.Count(), 9);
}

TEST_F(ValueObjects, BitsAreNotTakenFromAFileThatHasNone) {
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite));
    m_file << INT32_MAX << -1 << 12 << '\xFF';
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead));
    VBitString bits(5);
    EXPECT_FALSE(bits.Serialize(m_file) || bits.Serialize(m_file) || bits.Serialize(m_file) || bits.Count());
}

TEST_F(ValueObjects, TaggedValuesTravelByType) {
    auto const object = VObjectRef<VPoint>::Adopt(new VPoint(SPoint{1, 2}));
    SValue values[12];
    values[1].SetValueToBool(true);
    values[2].SetValueToChar('\x80');
    values[3].SetValueToInt(INT32_MIN);
    values[4].SetValueToFloat(-0.5F);
    values[5].SetValueToDouble(1.25e-300);
    values[6].SetValueToString(" a\n<b>");
    values[7].SetValueToObject(object.Get());
    values[8].SetValueToVoidPointer(&values);
    values[9].SetValueToString("");
    values[10].SetValueToObject(nullptr);
    SValue before;
    before.SetValueToInt(-1);
    for (SValue const& plain : values) {
        VValue value(plain);
        std::int32_t const type = plain.Type();
        SCOPED_TRACE(XMLOf(value));
        OpenSaved(value);
        VValue read(before);
        EXPECT_TRUE(read.Serialize(m_file));
        EXPECT_EQ(read.Value().Type(), type);
        EXPECT_EQ(read.IsEqual(value), type < SValue::kString || &plain == &values[10]);
        EXPECT_EQ(read.Value().GetVoidPointer(), nullptr) << "no bits of the number before";

        read = before;
        ReadXML(read, XMLOf(value));
        EXPECT_EQ(read.Value().Type(), type);
        EXPECT_EQ(read.IsEqual(value), type != SValue::kPVoid);

        auto const copy = VObjectRef<VObject>::Adopt(value.Copy());
        EXPECT_TRUE(copy->IsEqual(value));
    }
}

TEST_F(ValueObjects, TaggedValuesSurviveDamagedFiles) {
    VValue number;
    number.Value().SetValueToInt(77);
    VValue value(number);
    ReadXML(value, "<R><VValue type='int'/></R>");
    EXPECT_EQ(value.Value().GetInt(), 77) << "a missing value leaves the payload";
    ReadXML(value, "<R><VValue type='double'/></R>");
    EXPECT_EQ(value.Value().GetDouble(), 0) << "but not that of another type";
    ReadXML(value, "<R><VValue type='long' value='5'/></R>");
    EXPECT_EQ(value.Value().Type(), SValue::kUnknown);
    ReadXML(value, "<R><VValue type='char' value='321'/></R>");
    EXPECT_EQ(value.Value().GetChar(), 'A');

    std::string log;
    auto const object = VObjectRef<ACounted>::Adopt(new ACounted);
    object->LogTo(&log);
    value.Value().SetValueToObject(object.Get());
    ReadXML(value, "<R><VValue type='string' value='x'/></R>");
    EXPECT_EQ(log, "+-") << "what was held is released";
    value.Value().SetValueToObject(object.Get());
    OpenSaved(number);
    value.Serialize(m_file);
    EXPECT_EQ(value.Value().GetInt(), 77);
    EXPECT_EQ(log, "+-+") << "a chunked file releases nothing";
    object->Release();

    value.Value().SetValueToString("text");
    VValue const text(value);
    OpenSaved(value);
    value.Serialize(m_file);
    EXPECT_TRUE(value.IsEqual(text)) << "a string keeps its text";
    m_file.Seek(0, VFile::kFromStart);
    m_file.CloseChunk();
    number.Serialize(m_file);
    EXPECT_EQ(number.Value().Type(), SValue::kUnknown) << "a value stands inside a chunk";
}

} // namespace
