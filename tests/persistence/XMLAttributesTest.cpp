#include "foundation/strings/SPoint.h"
#include "foundation/strings/SRect.h"
#include "tests/persistence/XMLTestSupport.h"

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <sstream>
#include <type_traits>

namespace {

using namespace testing_support;

template <class T>
class XMLTyped : public XML {};

using Types = testing::Types<long, int, unsigned short, short, char, unsigned char, float, double, long long>;
TYPED_TEST_SUITE(XMLTyped, Types);

/// What is left of a value behind 6 or 16 digits.
template <class T>
T Carried(T value) {
    if constexpr (std::is_floating_point_v<T>) {
        std::ostringstream stream;
        stream << std::setprecision(std::is_same_v<T, float> ? 6 : 16) << value;
        return static_cast<T>(std::strtod(stream.str().c_str(), nullptr));
    } else {
        return value;
    }
}

TYPED_TEST(XMLTyped, KeepsItsExtremes) {
    using T = TypeParam;
    using Limits =
        std::conditional_t<std::is_same_v<T, long>, std::numeric_limits<int>, std::numeric_limits<T>>;
    T const values[] = {Limits::lowest(),   T(-7),  T(0),          T(1), Limits::max(), Limits::denorm_min(),
                        Limits::infinity(), T(0.5), T(-100) / T(3)};
    this->RoundTrip(
        [&](VXMLFile& file) {
            char name[] = "a";
            for (T value : values) {
                EXPECT_TRUE(file.SerializeAttribute(name, value));
                ++*name;
            }
        },
        [&](VXMLFile& file) {
            char name[] = "a";
            for (T const value : values) {
                T read{9};
                EXPECT_TRUE(file.SerializeAttribute(name, read));
                EXPECT_EQ(read, Carried(value));
                ++*name;
            }
            T kept{3};
            EXPECT_FALSE(file.ReadAttribute("absent", kept) || file.ReadAttribute(nullptr, kept));
            EXPECT_EQ(kept, T{3});
        });
}

TEST_F(XML, WritesAttributesInFixedForms) {
    EXPECT_EQ(Saved([](VXMLFile& file) {
                  file.WriteAttribute("a", -5L);
                  file.WriteAttribute("b", 'A');
                  file.WriteAttribute("c", 1.0F / 3);
                  file.WriteAttribute("d", 0.1);
                  file.WriteAttribute("e", 1.0 / 3);
                  file.WriteAttribute("f", 1e100);
                  file.WriteAttribute("g", true);
                  file.WriteAttribute("h", std::numeric_limits<long long>::min());
                  file.WriteAttribute("i", VString("text"));
                  file.WriteAttribute("j", std::numeric_limits<double>::quiet_NaN());
                  EXPECT_FALSE(file.WriteAttribute(nullptr, 1));
              }),
              R"(<R a="-5" b="65" c="0.333333" d="0.1" e="0.3333333333333333" f="1e+100" g="true")"
              R"( h="-9223372036854775808" i="text" j="nan" />)");
    VXMLFile closed;
    EXPECT_FALSE(closed.WriteAttribute("a", 1));
}

TEST_F(XML, ReadsNumbersHoweverTheyAreWritten) {
    struct {
        char const* text;
        long asLong;
        bool isLongLong;
        long long asLongLong;
        double asDouble;
    } const cases[] = {
        {"12abc", 12, true, 12, 12},
        {" +7", 7, true, 7, 7},
        {"abc", 0, true, 0, 0},
        {"-", 0, true, 0, 0},
        {"+-5", 0, true, 0, 0},
        {"99999999999", 2147483647, true, 99999999999, 99999999999.0},
        {"-99999999999", -2147483648, true, -99999999999, -99999999999.0},
        {"9223372036854775807", 2147483647, true, 9223372036854775807, 9223372036854775807.0},
        {"9223372036854775808", 2147483647, false, 0, 9223372036854775808.0},
        {"-9223372036854775809", -2147483648, false, 0, -9223372036854775809.0},
        {"1.5e3x", 1, true, 1, 1500},
        {"1,5", 1, true, 1, 1},
        {"1e999", 1, true, 1, std::numeric_limits<double>::infinity()},
        {"0x10", 0, true, 0, 16},
    };
    for (auto const& test : cases) {
        VXMLFile file;
        ASSERT_TRUE(Load(file, std::string("<R a='") + test.text + "'/>"));
        long asLong = 9;
        long long asLongLong = 9;
        double asDouble = 9;
        EXPECT_TRUE(file.ReadAttribute("a", asLong) && file.ReadAttribute("a", asDouble));
        EXPECT_EQ(file.ReadAttribute("a", asLongLong), test.isLongLong) << test.text;
        EXPECT_EQ(asLong, test.asLong) << test.text;
        EXPECT_EQ(asLongLong, test.asLongLong) << test.text;
        EXPECT_EQ(asDouble, test.asDouble) << test.text;
    }
    VXMLFile file;
    ASSERT_TRUE(Load(file, "<R e='' t='tRUE' y='YES' o='1' s='70000' n='nan'/>"));
    bool flag = false;
    long kept = 5;
    short narrowed = 0;
    double nan = 0;
    EXPECT_FALSE(file.ReadAttribute("e", kept));
    EXPECT_EQ(kept, 5);
    EXPECT_TRUE(file.ReadAttribute("t", flag) && flag);
    EXPECT_TRUE(file.ReadAttribute("y", flag) && flag);
    EXPECT_TRUE(file.ReadAttribute("o", flag) && !flag);
    EXPECT_TRUE(file.ReadAttribute("s", narrowed) && narrowed == 4464) << "keeps the low bits";
    EXPECT_TRUE(file.ReadAttribute("n", nan) && std::isnan(nan));
}

TEST_F(XML, NumbersDoNotFollowTheLocale) {
    // What localedef makes of LC_NUMERIC for German, so that no locale has to be installed.
    constexpr std::string_view kGerman{"\x14\x11\x03\x20\6\0\0\0 \0\0\0\"\0\0\0$\0\0\0(\0\0\0,\0\0\0"
                                       "0\0\0\0,\0.\0\3\3\0\0,\0\0\0.\0\0\0ISO-8859-1",
                                       58};
    std::filesystem::create_directory(Path("comma"));
    std::ofstream(Path("comma/LC_NUMERIC"), std::ios::binary) << kGerman << '\0';
    ::setenv("LOCPATH", m_folder.c_str(), 1);
    std::string const before = std::setlocale(LC_NUMERIC, nullptr);
    ASSERT_TRUE(std::setlocale(LC_NUMERIC, "comma"));
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
    std::string const text = Saved([](VXMLFile& file) {
        file.WriteAttribute("a", 1.5);
        file.WriteAttribute("b", 0.25F);
    });
    VXMLFile file;
    double read = 0;
    EXPECT_TRUE(Load(file, text) && file.ReadAttribute("a", read));
    std::setlocale(LC_NUMERIC, before.c_str());
    ::unsetenv("LOCPATH");
    EXPECT_EQ(text, R"(<R a="1.5" b="0.25" />)");
    EXPECT_EQ(read, 1.5);
}

TEST_F(XML, DefaultsAreNotWritten) {
    char const* const names[] = {"zero", "one", "two"};
    auto const write = [&](VXMLFile& file) {
        VString same("d");
        VString other("o");
        int one = 1;
        int two = 2;
        bool yes = true;
        bool no = false;
        unsigned long flags = 6;
        EXPECT_TRUE(file.SerializeAttribute("a", same, "d") && file.SerializeAttribute("b", other, "d"));
        EXPECT_TRUE(file.SerializeEnumAttribute("c", one, 3, names, 1));
        EXPECT_TRUE(file.SerializeEnumAttribute("d", two, 3, names, 1));
        EXPECT_FALSE(file.WriteEnumAttribute("e", 3, 3, names) || file.WriteEnumAttribute("e", -1, 3, names));
        EXPECT_TRUE(file.SerializeBoolAttribute("f", yes, true) &&
                    file.SerializeBoolAttribute("g", no, true));
        EXPECT_TRUE(file.SerializeBoolFlagAttribute("h", flags, 2, false));
        EXPECT_TRUE(file.SerializeBoolFlagAttribute("i", flags, 8, false));
    };
    EXPECT_EQ(Saved(write), R"(<R b="o" d="two" g="false" h="true" />)");

    VXMLFile file;
    ASSERT_TRUE(Load(file, "<R b='o' d='TWO' g='no' h='true' j='three' k=''/>"));
    VString text("?");
    int index = 7;
    bool flag = true;
    unsigned long flags = 8;
    EXPECT_TRUE(file.SerializeAttribute("a", text, "d") && text == "d");
    EXPECT_TRUE(file.SerializeAttribute("b", text, "d") && text == "o");
    EXPECT_TRUE(file.SerializeAttribute("k", text, "d") && text == "d") << "empty counts as absent";
    EXPECT_FALSE(file.SerializeEnumAttribute("j", index, 3, names) ||
                 file.ReadEnumAttribute("x", index, 3, names));
    EXPECT_FALSE(file.SerializeEnumAttribute("j", index, 3, names, 1));
    EXPECT_EQ(index, 7) << "no such name";
    EXPECT_TRUE(file.SerializeEnumAttribute("d", index, 3, names, 1) && index == 2);
    EXPECT_TRUE(file.SerializeEnumAttribute("c", index, 3, names, 1) && index == 1);
    EXPECT_TRUE(file.SerializeBoolAttribute("g", flag, true) && !flag);
    EXPECT_TRUE(!file.SerializeBoolAttribute("f", flag, true) && flag) << "the default, as it is absent";
    EXPECT_TRUE(file.SerializeBoolFlagAttribute("h", flags, 2, false) && flags == 10);
    EXPECT_TRUE(!file.SerializeBoolFlagAttribute("i", flags, 8, false) && flags == 2);
}

TEST_F(XML, KeepsGeometry) {
    SPoint point{-2147483647 - 1, 2147483647};
    SRect rect{-2147483647 - 1, -2147483647 - 1, -2147483647 - 1, -2147483647 - 1};
    RoundTrip(
        [&](VXMLFile& file) {
            EXPECT_TRUE(file.SerializePointAttribute("p", point) && file.SerializeRectAttribute("r", rect));
            file.WriteAttribute("bad", "1, 2, 3");
        },
        [&](VXMLFile& file) {
            SPoint readPoint;
            SRect readRect;
            EXPECT_TRUE(file.SerializePointAttribute("p", readPoint) && readPoint == point);
            EXPECT_TRUE(file.SerializeRectAttribute("r", readRect) && readRect == rect);
            EXPECT_FALSE(file.ReadPointAttribute("bad", readPoint) ||
                         file.ReadRectAttribute("bad", readRect));
            EXPECT_EQ(readPoint, point);
        });
}

} // namespace
