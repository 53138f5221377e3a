#include "foundation/strings/VString.h"

#include "foundation/core/VObjectRef.h"
#include "tests/support/SavedForms.h"

#include <climits>
#include <cstring>
#include <random>
#include <string>

namespace {

using namespace VFoundation;
using VStringTest = testing_support::SavedForms;

std::string Repeated(unsigned long count, char character = 'x') {
    return std::string(count, character);
}

TEST(VString, ReportsTheDescribedCapacities) {
    VString text;
    for (auto const& [length, capacity] :
         {std::pair{0UL, 128UL}, {127UL, 128UL}, {128UL, 256UL}, {299UL, 384UL}, {1UL, 384UL}}) {
        text = Repeated(length).c_str();
        EXPECT_EQ(text.Capacity(), capacity) << length;
    }
    text.Append(Repeated(400).c_str());
    EXPECT_EQ(text.Capacity(), 401U + 1 + 127) << "not a multiple of 128";
}

/// The rules of assigning and appending, without the memory.
struct Model {
    std::string bytes; // with the NULs that `Set` leaves
    unsigned long capacity = 128;

    std::string TextFrom(unsigned long offset) const { return bytes.c_str() + offset; }
    void Assign(std::string const& text) {
        bytes = text;
        capacity = bytes.size() < capacity ? capacity : (bytes.size() + 1) / 128 * 128 + 128;
    }
    void Append(std::string const& text) {
        if (bytes.size() + text.size() >= capacity) {
            capacity = bytes.size() + text.size() + 1 + 127;
            unsigned long const visible = std::strlen(bytes.c_str());
            bytes.replace(visible, bytes.size() - visible, bytes.size() - visible, '\0');
        }
        bytes += text;
    }
    void AppendPathComponent(std::string const& component) {
        std::string const separators = "/\\";
        bool const isJoined = bytes.empty() || separators.find(bytes.back()) != separators.npos ||
                              (!component.empty() && separators.find(component[0]) != separators.npos);
        Append(isJoined ? "" : "/");
        Append(component);
    }
};

TEST(VString, AgreesWithAModelOverRandomEdits) {
    std::mt19937 random(7);
    VString text;
    Model model;
    for (int i = 0; i < 30000; ++i) {
        std::string const other = Repeated(random() % (i % 100 ? 90 : 20000), "ab/\\"[random() % 4]);
        unsigned long const offset = random() % (model.bytes.size() + 1);
        unsigned long const length = random() % (2 * offset + 2);
        bool const isOwn = random() % 4 == 0; // the text comes from the string itself
        char const* const source = isOwn ? text.CString() + offset : other.c_str();
        std::string const expected = isOwn ? model.TextFrom(offset) : other;
        auto const operation = random() % 12;
        SCOPED_TRACE(testing::Message() << i << ": " << operation << (isOwn ? " own " : " ") << offset);
        if (operation == 0) {
            if (!isOwn || offset > 0) { // all of its own text is no change
                model.Assign(expected);
            }
            text = source;
        } else if (operation == 1 && isOwn && offset == 0) {
            if (length < model.capacity) {
                model.bytes.resize(length);
            }
            text.Set(source, length);
        } else if (operation == 1) {
            std::string padded = expected;
            padded.resize(length);
            model.Assign(padded);
            text.Set(source, length);
        } else if (operation == 2 || operation == 3) {
            model.AppendPathComponent(expected);
            text.AppendPathComponent(source);
        } else if (operation == 4) {
            model.Append("c");
            text << 'c';
        } else {
            model.Append(expected);
            text.Append(source);
        }
        ASSERT_EQ(std::string(text.CString(), text.Length()), model.bytes);
        ASSERT_EQ(text.Capacity(), model.capacity);
    }
}

TEST(VString, NullTextIsEmptyText) {
    char const* null = nullptr;
    VString text("abc");
    text.Append(null);
    text << null;
    text.AppendPathComponent(null);
    EXPECT_STREQ(text.CString(), "abc");
    EXPECT_FALSE(text == null);
    EXPECT_FALSE(text < null);
    text = null;
    EXPECT_TRUE(text.IsEmpty());
    text = "abc";
    text.Set(null, 5);
    EXPECT_TRUE(text.IsEmpty());
    text = "abc";
    text.Format(null, 1);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_FALSE(VString::CStringHasPathExtension(null, "a", false));
    EXPECT_FALSE(VString::CStringHasPathExtension("a.a", null, false));
    EXPECT_EQ(VString::strdup(null), nullptr);
    EXPECT_LT(VString::stricmp(null, ""), 0);
}

TEST(VString, SetKeepsTheGivenLength) {
    VString text;
    text.Set("ab", 5);
    EXPECT_EQ(text.Length(), 5U);
    EXPECT_STREQ(text.CString(), "ab");
    EXPECT_FALSE(text == "ab");
    auto const visible = VObjectRef<VString>::Adopt(text.Copy());
    EXPECT_EQ(visible->Length(), 2U);
    text.Set("y", VString::kMaxLength + 1);
    EXPECT_EQ(text.Length(), 5U) << "too long is refused";
}

TEST(VString, AppendsNumbersOfTenCharacters) {
    VString text;
    for (int const number : {0, -7, INT_MAX, -999999999, -1000000000, INT_MIN}) {
        text << number << ' ';
    }
    EXPECT_STREQ(text.CString(), "0 -7 2147483647 -999999999 -100000000 -214748364 ");
}

TEST(VString, SingleCharacters) {
    VString text("abc");
    text += '\0';
    text << 'd' << '\0' << 'e';
    EXPECT_STREQ(text.CString(), "abcde");
    EXPECT_EQ(text.GetCharAtIndex(5), '\0');
    EXPECT_EQ(text.GetCharAtIndex(ULONG_MAX), '\0');
    EXPECT_EQ(text.Find('c'), 2);
    EXPECT_EQ(text.Find('\0'), -1);
    text = '\0';
    EXPECT_TRUE(text.IsEmpty());
}

TEST(VString, ComparesByByte) {
    char const* const ascending[] = {"", "Abc", "ab", "abc", "abcd", "abd", "ab\xC3"};
    for (auto const* const& a : ascending) {
        for (auto const* const& b : ascending) {
            SCOPED_TRACE(testing::Message() << a << " " << b);
            EXPECT_EQ(VString(a) < VString(b), &a < &b);
            EXPECT_EQ(VString(a) < b, &a < &b);
            EXPECT_EQ(VString(a) == VString(b), &a == &b);
            EXPECT_EQ(VString(a) != b, &a != &b);
            EXPECT_EQ(VString(a).IsEqual(VString(b)), &a == &b);
        }
    }
    EXPECT_EQ(VString::stricmp("ABC", "abc"), 0);
    EXPECT_LT(VString::stricmp("ab", "ABC"), 0);
}

TEST(VString, FormatsWithinItsBounds) {
    VString text("self");
    text.Format("<%s|%i>", text.CString(), 5);
    EXPECT_STREQ(text.CString(), "<self|5>");
    text.Format("%s", Repeated(5000).c_str());
    EXPECT_EQ(text.Length(), VString::kFormatSize - 1);
    text.Format("%s%lc", "a", static_cast<wint_t>(0x7FFFFFFF));
    EXPECT_STREQ(text.CString(), "") << "the C library refuses the character";

    char buffer[8];
    std::memset(buffer, '#', sizeof buffer);
    EXPECT_TRUE(VString::snprintf(buffer, 4, "%s", "abcdef"));
    EXPECT_STREQ(buffer, "abc");
    EXPECT_EQ(buffer[4], '#');
    EXPECT_TRUE(VString::snprintf(buffer, 7, "%s", "a"));
    EXPECT_EQ(buffer[6], '\0') << "the last byte is a terminator too";
    EXPECT_TRUE(VString::snprintf(buffer, 0, "%s", "z"));
    EXPECT_EQ(buffer[0], 'a');
}

TEST(VString, DeletesTheLastPathComponent) {
    char const* const cases[][2] = {{"a/b/c", "a/b"}, {"a\\b/c", "a"}, {"C:\\dir/file", "C:"},
                                    {"a/b\\", "a/b"}, {"a/b/", "a/b"}, {"/a", ""},
                                    {"a", "a"},       {"", ""}};
    for (auto const& [path, expected] : cases) {
        VString text(path);
        text.DeleteLastPathComponent();
        EXPECT_STREQ(text.CString(), expected);
    }
}

TEST(VString, DescribesObjectsAndItself) {
    VString text("abc");
    text << text; // the description, not the text
    EXPECT_STREQ(text.CString(), "abc[VString] ");
    text.GetDescription(text);
    EXPECT_STREQ(text.CString(), "[VString] ");
}

TEST_F(VStringTest, TravelsThroughBothForms) {
    ExpectRoundTrips(VString(), VString("old"), R"(<VString string="" />)");
    ExpectRoundTrips(VString("0123456789"), VString(), R"(<VString string="0123456789" />)");
    ExpectRoundTrips(VString(" 0123456789<"), VString(), R"(<VString> 0123456789&lt;</VString>)");
    VString text("old");
    EXPECT_TRUE(ReadXML(text, "<VString/>"));
    EXPECT_STREQ(text.CString(), "");
    VString bytes("with \xFF and \n");
    SaveChunk(bytes);
    EXPECT_TRUE(ReadChunk(text));
    EXPECT_TRUE(text == bytes);
}

} // namespace
