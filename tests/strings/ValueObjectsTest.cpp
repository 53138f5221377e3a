#include "foundation/core/VException.h"
#include "foundation/strings/VBitString.h"
#include "foundation/strings/VDate.h"
#include "foundation/strings/VDev.h"
#include "foundation/strings/VPDFConnection.h"
#include "foundation/strings/VPoint.h"
#include "foundation/strings/VRange.h"
#include "foundation/strings/VRect.h"
#include "foundation/strings/VSize.h"
#include "foundation/strings/VTimeRange.h"
#include "foundation/strings/VURL.h"
#include "foundation/strings/VValue.h"
#include "tests/strings/SavedForms.h"
#include "tests/support/Counted.h"

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <limits>
#include <string>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

class ValueObjects : public testing_support::SavedForms {
  protected:
    /// The value as it is after loading what `value` saves into one that held `before`.
    VValue Loaded(VValue& value, SValue const& before) {
        OpenSaved(value);
        VValue loaded(before);
        EXPECT_TRUE(loaded.Serialize(m_file));
        return loaded;
    }
    static SValue Made(std::function<void(SValue&)> const& set) {
        SValue value;
        set(value);
        return value;
    }
};

TEST_F(ValueObjects, TravelThroughBothForms) {
    VPoint point(SPoint{INT32_MIN, INT32_MAX});
    ExpectRoundTrips(point, VPoint());
    VSize size(SSize{1, -2});
    ExpectRoundTrips(size, VSize());
    VRect rect(SRect{1, 2, 3, 4});
    ExpectRoundTrips(rect, VRect());
    VDate date(LLONG_MIN);
    ExpectRoundTrips(date, VDate());
    VRange range(-5, INT32_MAX);
    ExpectRoundTrips(range, VRange(1, 1));
    VTimeRange span(-0.25, 1e300);
    ExpectRoundTrips(span, VTimeRange());
    VURL url("http://a/?<&>'\"");
    ExpectRoundTrips(url, VURL("b"));
    VURL noUrl;
    ExpectRoundTrips(noUrl, url);
    VPDFConnection connection;
    VPDFConnection named;
    named.SetName("");
    named.SetPage(7);
    ExpectRoundTrips(connection, named);
    ExpectRoundTrips(named, connection);
    VBitString bits;
    bits.SetFromString("1000000001");
    ExpectRoundTrips(bits, VBitString(3));
    VBitString noBits;
    ExpectRoundTrips(noBits, bits);
}

TEST_F(ValueObjects, StandInFilesAsDescribed) {
    EXPECT_NE(XMLOf(VRect(SRect{1, 2, 3, 4})).find("<VRect left=\"1\" top=\"2\" right=\"3\" bottom=\"4\""),
              std::string::npos);
    EXPECT_NE(XMLOf(VPDFConnection()).find("connection_name=\"Unconnected\" connection_page=\"0\""),
              std::string::npos);
    VPoint point(SPoint{1, 2});
    ReadXML(point, "<VPoint y='5'/>");
    EXPECT_STREQ(point.Description().CString(), "[VPoint] x: 1, y: 5");
    VRange range;
    ReadXML(range, "<VRange location='-1' length='-7'/>");
    EXPECT_TRUE(range == VRange(-1, 0)) << "a damaged file makes no damaged range";
    EXPECT_STREQ(VTimeRange(0.5, 2).Description().CString(), "[VTimeRange] start: 0.5, duration: 2");
    auto const dev = VObjectRef<VDev>::Adopt(VDev::New());
    EXPECT_STREQ(dev->ClassName(), "VDev");
}

TEST(Date, IsWrittenAsTheCLibraryWouldInEnglish) {
    std::string const zone = std::getenv("TZ") ? std::getenv("TZ") : "";
    ::setenv("TZ", "XYZ-02:30", 1);
    ::tzset();
    for (long long const seconds : {0LL, -1LL, 951'782'400LL, 1'794'784'079LL, 253'402'300'799LL - 9000}) {
        std::time_t const time{seconds};
        std::tm local{};
        char expected[64] = {};
        ::localtime_r(&time, &local);
        std::string const line = ::asctime_r(&local, expected);
        EXPECT_EQ(VDate(seconds).AsString().CString() + std::string("\n"), line);
    }
    EXPECT_STREQ(VDate(951'782'400).AsString().CString(), "Tue Feb 29 02:30:00 2000");
    EXPECT_STREQ(VDate(LLONG_MAX).AsString().CString(), "");
    EXPECT_STREQ(VDate(0).Description().CString(), "[VDate] Thu Jan  1 02:30:00 1970");
    zone.empty() ? ::unsetenv("TZ") : ::setenv("TZ", zone.c_str(), 1);
    ::tzset();
    long long const before = std::time(nullptr);
    VDate const now = VDate::Now();
    EXPECT_TRUE(now.Seconds() >= before && now <= VDate(std::time(nullptr)));
    EXPECT_EQ(VDate::NowAsString().Length(), 24U);
    EXPECT_TRUE(VDate(1) < VDate(2) && VDate(2) == VDate(2));
}

TEST(Range, StaysInsideThirtyTwoBits) {
    EXPECT_EQ(VRange(INT32_MAX, 5).End(), INT32_MAX);
    EXPECT_EQ(VRange(INT32_MAX - 3, 5).Length(), 3);
    EXPECT_EQ(VRange(INT32_MIN, INT32_MAX).End(), -1);
    EXPECT_EQ(VRange(3, -5).Length(), 0);
    VRange const all = VRange(INT32_MIN, 1).Union(VRange(INT32_MAX - 1, 1));
    EXPECT_TRUE(all == VRange(INT32_MIN, INT32_MAX));
    EXPECT_TRUE(VRange(0, 4).Union(VRange(8, 2)) == VRange(0, 10));
    EXPECT_TRUE(VRange(0, 4).Union(VRange(99, 0)) == VRange(0, 4));
    EXPECT_TRUE(VRange(0, 4).Intersection(VRange(2, 9)) == VRange(2, 2));
    EXPECT_TRUE(VRange(1, 4).Intersection(VRange(5, 9)) == VRange());
    VRange const range(-2, 2);
    EXPECT_TRUE(range.Contains(-2) && range.Contains(-1));
    EXPECT_FALSE(range.Contains(0) || range.Contains(-3) || VRange(4, 0).Contains(4));
}

TEST(TimeRange, StaysFinite) {
    double const infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(VTimeRange(1e308, infinite).End(), DBL_MAX);
    EXPECT_EQ(VTimeRange(-infinite, -1).Start(), -DBL_MAX);
    EXPECT_TRUE(VTimeRange(std::nan(""), std::nan("")) == VTimeRange());
    EXPECT_TRUE(VTimeRange(1e300, 1).IsEmpty()) << "a second is nothing there";
    EXPECT_EQ(VTimeRange(-DBL_MAX, 1e300).Union(VTimeRange(1e308, 1e300)).Duration(), DBL_MAX);
    EXPECT_TRUE(VTimeRange(0.5, 1).Intersection(VTimeRange(1, 9)) == VTimeRange(1, 0.5));
    EXPECT_FALSE(VTimeRange(0, 1).Contains(1) || VTimeRange(0, 1).Contains(std::nan("")));
}

TEST(URL, IsSplitStrictly) {
    struct {
        char const* text;
        char const* parts; // scheme|host|port|path|query
    } const cases[] = {
        {"http://user:pw@example.org:8080/a/b?q=1?#top", "http|example.org|8080|/a/b|q=1?"},
        {"HTTP://[::1]:80", "HTTP|[::1]|80||"},
        {"x://[1:2:3:4:5:6:7:8]/", "x|[1:2:3:4:5:6:7:8]|-1|/|"},
        {"x://[::ffff:192.0.2.255]/", "x|[::ffff:192.0.2.255]|-1|/|"},
        {"x://[1:2:3:4:5:6:1.2.3.4]", "x|[1:2:3:4:5:6:1.2.3.4]|-1||"},
        {"x://[v1.a:b]", "x|[v1.a:b]|-1||"},
        {"file:///etc/hosts", "file||-1|/etc/hosts|"},
        {"mailto:a@b.c", "mailto||-1|a@b.c|"},
        {"urn:a:b/c", "urn||-1|a:b/c|"},
        {"a+-.1:%41%fF", "a+-.1||-1|%41%fF|"},
        {"http://h:", "http|h|-1||"},
        {"http://h?a/b", "http|h|-1||a/b"},
        {"http://h#a?b", "http|h|-1||"},
        {"http://h:65535/", "http|h|65535|/|"},
    };
    for (auto const& [text, parts] : cases) {
        VURL const url(text);
        EXPECT_TRUE(url.IsValid()) << text;
        std::string const split = std::string(url.Scheme().CString()) + "|" + url.Host().CString() + "|" +
                                  std::to_string(url.Port()) + "|" + url.Path().CString() + "|" +
                                  url.Query().CString();
        EXPECT_EQ(split, parts) << text;
    }
    for (char const* const text : {"",
                                   "no-scheme",
                                   "/a",
                                   "1a:b",
                                   ":b",
                                   "a_b:c",
                                   "a b:c",
                                   "http://a b/",
                                   "http://h/%4",
                                   "http://h/%zz",
                                   "http://h:65536/",
                                   "http://h:1x",
                                   "http://[::1",
                                   "http://[::1]x",
                                   "http://[1::2::3]",
                                   "http://[:1]",
                                   "http://[1:2:3:4:5:6:7]",
                                   "http://[1:2:3:4:5:6:7:8:9]",
                                   "http://[::1.2.3.256]",
                                   "http://[::1.2.3]",
                                   "http://[1.2.3.4::]",
                                   "http://[12345::]",
                                   "http://[v.a]",
                                   "http://[v1.]",
                                   "http://a@b@c/",
                                   "http://a[b/",
                                   "http://h/\xC3\xA9",
                                   "http://h/#a#b",
                                   "http://h/?\"",
                                   "http://h/\n"}) {
        VURL const url(text);
        EXPECT_FALSE(url.IsValid()) << text;
        EXPECT_TRUE(url.Scheme().IsEmpty() && url.Path().IsEmpty() && url.Port() == -1) << text;
        EXPECT_STREQ(url.Text().CString(), text);
    }
}

TEST(BitString, SetsCountsAndCombines) {
    VBitString bits(70);
    EXPECT_TRUE(bits.SetBit(69, true) && bits.SetBit(0, true) && bits.SetBit(0, true) && bits.FlipBit(8));
    EXPECT_FALSE(bits.SetBit(70, true) || bits.FlipBit(-1) || bits.GetBit(70) || bits.GetBit(-1));
    EXPECT_EQ(bits.CountOnes(), 3);
    bits.SetCount(9);
    bits.SetCount(70);
    EXPECT_EQ(bits.CountOnes(), 2) << "what was cut off is gone";
    bits.SetCount(-1);
    EXPECT_EQ(bits.Count(), 0);

    auto const combined = [](char const* a, char const* b, void (VBitString::*operation)(VBitString const&)) {
        VBitString mine;
        VBitString theirs;
        EXPECT_TRUE(mine.SetFromString(a) && theirs.SetFromString(b));
        (mine.*operation)(theirs);
        return std::string(mine.AsString().CString());
    };
    EXPECT_EQ(
        combined("1100", "1010", static_cast<void (VBitString::*)(VBitString const&)>(&VBitString::And)),
        "1000");
    EXPECT_EQ(combined("1100", "1010111111", &VBitString::Or), "1110");
    EXPECT_EQ(combined("1100", "101", &VBitString::Xor), "0110");
    EXPECT_EQ(combined("111111111", "1", &VBitString::And), "100000000");
    VBitString kept;
    EXPECT_TRUE(kept.SetFromString("101"));
    EXPECT_FALSE(kept.SetFromString("12") || kept.SetFromString(nullptr));
    EXPECT_STREQ(kept.AsString().CString(), "101");
}

TEST_F(ValueObjects, BitsAreNotTakenFromAFileThatHasNone) {
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite));
    m_file << INT32_MAX << -1 << 12 << '\xFF';
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead));
    VBitString bits(5);
    EXPECT_FALSE(bits.Serialize(m_file));
    EXPECT_EQ(bits.Count(), 0);
    EXPECT_FALSE(bits.Serialize(m_file));
    EXPECT_FALSE(bits.Serialize(m_file)) << "half of them are missing";
    EXPECT_STREQ(bits.AsString().CString(), "111111110000");
}

TEST_F(ValueObjects, TaggedValuesTravelByType) {
    auto const object = VObjectRef<VPoint>::Adopt(new VPoint(SPoint{1, 2}));
    int cell = 0;
    struct {
        char const* name;
        SValue value;
        bool standsInChunks;
        bool standsInXML;
    } const cases[] = {
        {"unknown", SValue(), true, true},
        {"bool", Made([](SValue& v) { v.SetValueToBool(true); }), true, true},
        {"char", Made([](SValue& v) { v.SetValueToChar('\x80'); }), true, true},
        {"int", Made([](SValue& v) { v.SetValueToInt(INT32_MIN); }), true, true},
        {"float", Made([](SValue& v) { v.SetValueToFloat(-0.5F); }), true, true},
        {"double", Made([](SValue& v) { v.SetValueToDouble(1.25e-300); }), true, true},
        {"string", Made([](SValue& v) { v.SetValueToString(" a\n<b>"); }), false, true},
        {"string", Made([](SValue& v) { v.SetValueToString(""); }), false, true},
        {"object", Made([&](SValue& v) { v.SetValueToObject(object.Get()); }), false, true},
        {"object", Made([](SValue& v) { v.SetValueToObject(nullptr); }), true, true},
        {"pvoid", Made([&](SValue& v) { v.SetValueToVoidPointer(&cell); }), false, false},
    };
    SValue const before = Made([](SValue& v) { v.SetValueToInt(-1); });
    for (auto const& [name, plain, standsInChunks, standsInXML] : cases) {
        VValue value(plain);
        VValue const loaded = Loaded(value, before);
        EXPECT_EQ(loaded.Value().Type(), plain.Type()) << name;
        EXPECT_EQ(loaded.IsEqual(value), standsInChunks) << name;
        EXPECT_EQ(loaded.Value().GetObject(), nullptr);
        EXPECT_EQ(loaded.Value().GetVoidPointer(), nullptr) << "no bits of the number before";

        std::string const xml = XMLOf(value);
        EXPECT_NE(xml.find("type=\"" + std::string(name) + "\""), std::string::npos) << xml;
        VValue read(before);
        ReadXML(read, xml);
        EXPECT_EQ(read.IsEqual(value), standsInXML) << xml;
        EXPECT_EQ(read.Value().Type(), plain.Type());

        auto const copy = VObjectRef<VObject>::Adopt(value.Copy());
        EXPECT_TRUE(copy->IsEqual(value));
        EXPECT_FALSE(copy->IsEqual(*object));
    }
    VValue held;
    ReadXML(held, XMLOf(VValue(cases[8].value)));
    EXPECT_TRUE(held.Value().GetObject() && static_cast<VPoint*>(held.Value().GetObject())->y == 2);
    EXPECT_EQ(held.Value().GetObject()->RetainCount(), 1);
}

TEST_F(ValueObjects, TaggedValuesSurviveDamagedFiles) {
    VValue value(Made([](SValue& v) { v.SetValueToInt(77); }));
    ReadXML(value, "<VValue type='int'/>");
    EXPECT_EQ(value.Value().GetInt(), 77) << "a missing value leaves the payload";
    ReadXML(value, "<VValue type='double'/>");
    EXPECT_EQ(value.Value().GetDouble(), 0) << "but not that of another type";
    ReadXML(value, "<VValue type='long' value='5'/>");
    EXPECT_EQ(value.Value().Type(), SValue::kUnknown);
    ReadXML(value, "<VValue type='char' value='321'/>");
    EXPECT_EQ(value.Value().GetChar(), 'A');

    std::string log;
    auto const object = VObjectRef<ACounted>::Adopt(new ACounted);
    object->LogTo(&log);
    value.Value().SetValueToObject(object.Get());
    ReadXML(value, "<VValue type='string' value='x'/>");
    EXPECT_EQ(log, "+-") << "what was held is released";

    value.Value().SetValueToObject(object.Get());
    VValue number(Made([](SValue& v) { v.SetValueToInt(5); }));
    OpenSaved(number);
    value.Serialize(m_file);
    EXPECT_EQ(value.Value().GetInt(), 5);
    EXPECT_EQ(log, "+-+") << "a chunked file releases nothing";
    object->Release();

    value.Value().SetValueToString("text");
    VValue string(value);
    OpenSaved(string);
    value.Serialize(m_file);
    VString text;
    EXPECT_TRUE(value.Value().GetString(text));
    EXPECT_STREQ(text.CString(), "text") << "a string keeps its text";
    EXPECT_EQ(Loaded(number, Made([](SValue&) {})).Value().GetInt(), 5);
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead));
    number.Serialize(m_file);
    EXPECT_EQ(number.Value().Type(), SValue::kUnknown) << "a value stands inside a chunk";

    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kWrite));
    m_file.OpenChunk("OBJT");
    m_file << short{300};
    m_file.CloseChunk();
    ASSERT_TRUE(m_file.Open(m_scratch.Path(), VAIFile::kRead | VAIFile::kChunkSafe));
    m_file.ReadChunkHeader(nullptr, nullptr);
    number.Serialize(m_file);
    EXPECT_EQ(number.Value().Type(), 300);
    number = string;
    EXPECT_TRUE(number.IsEqual(string));
}

} // namespace
