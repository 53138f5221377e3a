#include "foundation/image/VImage.h"
#include "foundation/strings/values/SColour.h"
#include "foundation/strings/values/SPoint.h"
#include "foundation/strings/values/SRect.h"
#include "foundation/strings/values/VColour.h"
#include "tests/persistence/XMLTestSupport.h"

#include <clocale>
#include <cstdlib>
#include <iomanip>
#include <limits>
#include <sstream>
#include <type_traits>

namespace {

using namespace testing_support;

using XMLFileAttributes = XMLBackEndTest;

template <class T>
class XMLFileTypedAttributes : public XMLTest {};
using Types = testing::Types<long, int, unsigned short, short, char, unsigned char, float, double, long long>;
TYPED_TEST_SUITE(XMLFileTypedAttributes, Types);

TYPED_TEST(XMLFileTypedAttributes, KeepsItsExtremes) {
    using T = TypeParam;
    using Limits =
        std::conditional_t<std::is_same_v<T, long>, std::numeric_limits<int>, std::numeric_limits<T>>;
    T const lowest = Limits::is_integer ? T(Limits::lowest()) : T(-2.5e30);
    T const highest = Limits::is_integer ? T(Limits::max()) : T(Limits::infinity());
    for (T value : {lowest, highest, T(Limits::denorm_min()), T(1.5)}) {
        typename TestFixture::Document file(TestFixture::Saved(
            [&](VXMLFile& saving) { EXPECT_TRUE(saving.SerializeAttribute("a", value)); }));
        T read{9};
        EXPECT_FALSE(file.ReadAttribute("absent", read));
        EXPECT_FALSE(file.ReadAttribute(nullptr, read));
        EXPECT_EQ(read, T{9});
        EXPECT_TRUE(file.SerializeAttribute("a", read));
        EXPECT_EQ(read, value);
    }
}

ON_EACH_BACK_END(XMLFileAttributes);

TEST_P(XMLFileAttributes, WritesAttributesInFixedFormsWhateverTheLocale) {
    // What localedef makes of LC_NUMERIC for German, so that no locale has to be installed.
    constexpr std::string_view kGerman{"\x14\x11\x03\x20\6\0\0\0 \0\0\0\"\0\0\0$\0\0\0(\0\0\0,\0\0\0"
                                       "0\0\0\0,\0.\0\3\3\0\0,\0\0\0.\0\0\0ISO-8859-1",
                                       58};
    std::filesystem::create_directory(Path("comma"));
    std::ofstream(Path("comma/LC_NUMERIC"), std::ios::binary) << kGerman << '\0';
    ::setenv("LOCPATH", m_folder.c_str(), 1);
    ASSERT_TRUE(std::setlocale(LC_NUMERIC, "comma"));
    std::string const text = Saved([](VXMLFile& file) {
        file.WriteAttribute("a", 'A');
        file.WriteAttribute("b", 1.0F / 3);
        file.WriteAttribute("c", 0.1);
        file.WriteAttribute("d", true);
        file.WriteAttribute("e", std::numeric_limits<long long>::min());
        file.WriteAttribute("f", VString("text"));
        file.WriteAttribute("g", std::numeric_limits<double>::quiet_NaN());
        EXPECT_FALSE(file.WriteAttribute(nullptr, 1));
        EXPECT_FALSE(VXMLFile().WriteAttribute("a", 1));
    });
    EXPECT_EQ(text,
              R"(<R a="65" b="0.333333" c="0.1" d="true" e="-9223372036854775808" f="text" g="nan" />)");
    double read = 0;
    EXPECT_TRUE(Document(text).ReadAttribute("c", read));
    EXPECT_EQ(read, 0.1);
    EXPECT_TRUE(Document("<R c='+2.5'/>").ReadAttribute("c", read));
    EXPECT_EQ(read, 2.5);
    std::setlocale(LC_NUMERIC, "C");
    ::unsetenv("LOCPATH");
}

TEST_P(XMLFileAttributes, ReadsNumbersHoweverTheyAreWritten) {
    std::istringstream cases(BytesOf(PERSISTENCE_TEST_DATA "/numbers.txt")); // text, long, long long, double
    std::string text;
    for (std::string expected; std::getline(cases, text, '|') && std::getline(cases, expected);) {
        Document file("<R a='" + text + "'/>");
        long asLong = 9;
        long long asLongLong = 9;
        double asDouble = 9;
        EXPECT_TRUE(file.ReadAttribute("a", asLong));
        EXPECT_TRUE(file.ReadAttribute("a", asDouble));
        char const* const none = file.ReadAttribute("a", asLongLong) ? "" : "none ";
        std::ostringstream read;
        read << std::setprecision(12) << asLong << ' ' << none << asLongLong << ' ' << asDouble;
        EXPECT_EQ(read.str(), expected) << text;
    }
    EXPECT_TRUE(cases.eof());
    Document file("<R e='' t='tRUE' y='YES' o='1' s='70000'/>");
    bool flag = false;
    short narrowed = 5;
    EXPECT_FALSE(file.ReadAttribute("e", narrowed));
    EXPECT_EQ(narrowed, 5);
    EXPECT_TRUE(file.ReadAttribute("t", flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(file.ReadAttribute("y", flag));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(file.ReadAttribute("o", flag));
    EXPECT_FALSE(flag);
    EXPECT_TRUE(file.ReadAttribute("s", narrowed));
    EXPECT_EQ(narrowed, 4464) << "keeps the low bits";
}

TEST_P(XMLFileAttributes, DefaultsAreNotWritten) {
    char const* const names[] = {"zero", "one", "two"};
    VString text("d");
    int index = 1;
    bool flag = true;
    unsigned long flags = 6;
    EXPECT_EQ(
        Saved([&](VXMLFile& file) {
            for (bool const isDone :
                 {file.SerializeAttribute("a", text, "d"), file.SerializeAttribute("b", text, "o"),
                  file.SerializeEnumAttribute("c", index, 3, names, 1),
                  file.SerializeEnumAttribute("d", index, 3, names, 2),
                  !file.WriteEnumAttribute("e", 3, 3, names), !file.WriteEnumAttribute("e", -1, 3, names),
                  file.SerializeBoolAttribute("f", flag, true), file.SerializeBoolAttribute("g", flag, false),
                  file.SerializeBoolFlagAttribute("h", flags, 2, false),
                  file.SerializeBoolFlagAttribute("i", flags, 8, false)}) {
                EXPECT_TRUE(isDone);
            }
        }),
        R"(<R b="d" d="one" g="true" h="true" />)");
    Document file("<R b='o' d='TWO' g='no' h='true' j='three' k=''/>");
    EXPECT_TRUE(file.SerializeAttribute("b", text, "d"));
    EXPECT_EQ(text, "o");
    EXPECT_TRUE(file.SerializeAttribute("k", text, "d"));
    EXPECT_EQ(text, "d") << "empty counts as absent";
    EXPECT_FALSE(file.SerializeEnumAttribute("j", index, 3, names, 2));
    EXPECT_EQ(index, 1) << "no such name";
    EXPECT_TRUE(file.SerializeEnumAttribute("d", index, 3, names, 1));
    EXPECT_EQ(index, 2);
    EXPECT_TRUE(file.SerializeEnumAttribute("c", index, 3, names, 1));
    EXPECT_EQ(index, 1);
    EXPECT_TRUE(file.SerializeBoolAttribute("g", flag, true));
    EXPECT_FALSE(flag);
    EXPECT_FALSE(file.SerializeBoolAttribute("f", flag, true));
    EXPECT_TRUE(flag) << "the default, as it is absent";
    EXPECT_FALSE(file.SerializeBoolFlagAttribute("i", flags, 4, false));
    EXPECT_EQ(flags, 2U);
}

TEST_P(XMLFileAttributes, KeepsGeometry) {
    SPoint point{std::numeric_limits<int>::min(), 7};
    SRect rect{1, 2, 3, point.x};
    Document file(Saved([&](VXMLFile& saving) {
        EXPECT_TRUE(saving.SerializePointAttribute("p", point));
        EXPECT_TRUE(saving.SerializeRectAttribute("r", rect));
    }));
    SPoint readPoint;
    SRect readRect;
    EXPECT_TRUE(file.SerializePointAttribute("p", readPoint));
    EXPECT_EQ(readPoint, point);
    EXPECT_TRUE(file.SerializeRectAttribute("r", readRect));
    EXPECT_EQ(readRect, rect);
    EXPECT_FALSE(file.ReadPointAttribute("r", readPoint));
    EXPECT_FALSE(file.ReadRectAttribute("p", readRect));
}

TEST_P(XMLFileAttributes, KeepsColoursInAttributesAndChildren) {
    SColour colour(1, 2, 3, 4);
    SColour const fallback(9, 8, 7, 6);
    EXPECT_EQ(Saved([&](VXMLFile& file) {
                  EXPECT_FALSE(file.SerializeColourAttribute("a", colour, fallback))
                      << "whatever was written";
                  EXPECT_FALSE(file.SerializeColourAttribute("b", colour, colour));
              }),
              R"(<R a="[r:1 g:2 b:3 a:4]" />)");
    Document file("<R a='[r:1 g:2 b:3 a:4]' e=''><VColour name='c' colour='5,6,7'/>"
                  "<VColour name='partial' red='300'/><VString name='s'/></R>");
    auto const read = [&](char const* name) {
        EXPECT_TRUE(file.SerializeColourAttribute(name, colour, fallback));
        EXPECT_EQ(colour.red16, colour.red << 8);
        return std::string(colour.GetColourAsString(0).CString());
    };
    EXPECT_EQ(read("a"), "1, 2, 3, 4");
    EXPECT_EQ(read("c"), "5, 6, 7, 255");
    EXPECT_EQ(read("partial"), "255, 8, 7, 6") << "nothing of the colour read before";
    for (char const* const absent : {"e", "s", "absent", static_cast<char const*>(nullptr)}) {
        EXPECT_EQ(read(absent), "9, 8, 7, 6");
    }
}

TEST_P(XMLFileAttributes, NamesImagesByTheirFile) {
    std::string const picture = PERSISTENCE_TEST_DATA "/../image/saved.tga";
    Document file("<R a='" + picture + "' b='missing.tga' c=''/>");
    VImage* image = VImage::New();
    auto const before = VObjectRef<VImage>(image);
    EXPECT_TRUE(file.ReadImageAttribute("b", image));
    EXPECT_EQ(image, before.Get()) << "there, but no image";
    EXPECT_FALSE(file.ReadImageAttribute("c", image));
    EXPECT_FALSE(file.ReadImageAttribute("absent", image));
    EXPECT_TRUE(file.SerializeImageAttribute("a", image));
    EXPECT_NE(image, before.Get());
    EXPECT_EQ(before->RetainCount(), 1) << "the image before is released";
    EXPECT_EQ(Saved([&](VXMLFile& saving) {
                  EXPECT_FALSE(saving.SerializeImageAttribute("a", image)) << "whatever was written";
                  EXPECT_FALSE(saving.WriteImageAttribute("b", nullptr));
              }),
              "<R a=\"" + picture + "\" />");
    image->Release();
}

} // namespace
