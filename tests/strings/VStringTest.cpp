#include "foundation/strings/VString.h"

#include "foundation/core/VObjectRef.h"
#include "tests/support/SavedForms.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <wchar.h>

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
    EXPECT_EQ(VString(Repeated(127)).Capacity(), 256U) << "made with it, not assigned";
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
        std::string_view const view(source, isOwn ? text.Length() - offset : other.size()); // may hold NULs
        std::string const expected = isOwn ? model.TextFrom(offset) : other;
        auto const operation = random() % 16;
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
        } else if (operation == 5) {
            model.Assign(expected);
            text = view;
        } else if (operation == 6) {
            VString moved(view);
            moved.Append(Repeated(random() % 300));
            model.Assign(moved.StdString());
            text = std::move(moved);
            moved << "again";
            ASSERT_STREQ(moved.CString(), "again");
        } else if (operation == 7) {
            VString taken(std::move(text));
            text << "gone"; // with the move back
            model.capacity = 128;
            model.Assign(model.bytes);
            text = std::move(taken);
        } else if (operation == 8 && !expected.empty()) {
            model.Append(expected);
            text << view;
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
    EXPECT_FALSE(VString::CStringHasPathExtension("a.b/c", "b/c", false)) << "the dot is a folder's";
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
    text = "abcdef";
    text.Set(text.CString(), 3);
    text.Set(text.CString(), 6);
    EXPECT_EQ(std::string_view(text.CString(), 6), std::string_view("abc\0\0\0", 6))
        << "what it uncovers is zero";
}

TEST(VString, AppendsNumbersOfTenCharacters) {
    VString text;
    for (int const number : {0, -7, INT_MAX, -999999999, -1000000000, INT_MIN}) {
        text << number << ' ';
    }
    EXPECT_STREQ(text.CString(), "0 -7 2147483647 -999999999 -100000000 -214748364 ");
}

TEST(VString, AppendsEveryOtherNumberWhole) {
    enum Plain { ePlain = 7 };
    VString text;
    text << true << ' ' << static_cast<short>(-2) << ' ' << static_cast<signed char>('A') << ' '
         << static_cast<unsigned char>(200) << ' ' << ePlain << ' ' << 4000000000U << ' ' << LONG_MIN << ' '
         << ULLONG_MAX << ' ' << 0.1F << ' ' << -0.1 << ' ' << 1e300 << ' ' << 0.1L;
    EXPECT_STREQ(text.CString(),
                 "1 -2 65 200 7 4000000000 -9223372036854775808 18446744073709551615 0.1 -0.1 1e+300 0.1");
}

enum Number : int { kOne = 1 };
static_assert(!std::is_assignable_v<VString&, int> && !std::is_assignable_v<VString&, bool> &&
              !std::is_assignable_v<VString&, Number> && !std::is_assignable_v<VString&, double> &&
              !std::is_convertible_v<VString, char const*>);
static_assert(std::is_nothrow_move_constructible_v<VString> && std::is_nothrow_move_assignable_v<VString>);

TEST(VString, MeetsTheTextOfTheStandardLibrary) {
    using namespace std::string_view_literals;
    VString text(std::string("ab\0cd", 5));
    EXPECT_EQ(text.Length(), 2U) << "text stops at its first NUL";
    text = "path"sv;
    text.Append(std::string("/to"));
    text.Append(text);
    EXPECT_EQ(text, "path/topath/to"sv);
    EXPECT_EQ(std::string("path/topath/to"), text);
    EXPECT_NE(text, "path/"sv);
    EXPECT_LT(text, std::string("q"));
    EXPECT_GT("path/topath/u", text);
    EXPECT_GT(text, static_cast<char const*>(nullptr));
    EXPECT_EQ(text.Find("to"), 5);
    EXPECT_EQ(text.Find("to"sv, 6), 12);
    EXPECT_EQ(text.Find(VString("to"), 13), -1);
    EXPECT_EQ(text.Find("", 99), -1);
    EXPECT_EQ(text.Substring(5, 6), "topath"sv);
    EXPECT_EQ(text.Substring(12), text.View().substr(12));
    EXPECT_EQ(text.Substring(15), ""sv);
    std::ostringstream stream;
    stream << text;
    EXPECT_EQ(stream.str(), text.StdString());
}

TEST(VString, IsAKeyThatAnyTextFinds) {
    std::unordered_map<VString, int, std::hash<VString>, std::equal_to<>> lengths;
    VString padded;
    padded.Set("a", 3);
    lengths[padded] = 3;
    lengths["a"] = 1;
    EXPECT_EQ(lengths.find(std::string_view("a\0\0", 3))->second, 3);
    EXPECT_EQ(lengths.find("a")->second, 1);
    EXPECT_EQ(lengths.find(std::string("a"))->second, 1);
    padded.Append(Repeated(500)); // what stands past the NUL does not count
    VString other;
    other.Set("a", 3);
    other.Append(Repeated(500, 'y'));
    EXPECT_TRUE(padded == other);
    EXPECT_EQ(std::hash<VString>{}(padded), std::hash<VString>{}(other));
    EXPECT_TRUE(std::is_eq(padded <=> VString("a"))) << "as they sort";
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

/// Whole and cut, by a buffer of each of these sizes.
template <class... Arguments>
void ExpectTheTextOfTheCLibrary(char const* format, Arguments... arguments) {
    for (unsigned long const size : {1UL, 2UL, 5UL, 9UL, 10UL, 11UL, 60UL}) {
        char text[60];
        char expected[sizeof text];
        VString::snprintf(text, size, format, arguments...);
        std::snprintf(expected, size, format, arguments...);
        EXPECT_STREQ(text, expected) << format << ", size " << size;
    }
}

TEST(VString, FormatsAsTheCLibraryDoes) {
    char const* const volatile null = nullptr; // the compiler would not let it pass
    ExpectTheTextOfTheCLibrary("%s|%i|%d.", "abc", 5, std::numeric_limits<int>::min());
    ExpectTheTextOfTheCLibrary("%li %lu %ld", std::numeric_limits<long>::min(), ~0UL, 0L);
    ExpectTheTextOfTheCLibrary("%u%% of %%i %c%s", ~0U, 'x', "");
    ExpectTheTextOfTheCLibrary("%s %5i %-3s|%+d", "a", 3, "z", 4);
    ExpectTheTextOfTheCLibrary("%i %s %.2f", 1, static_cast<char const*>(null), 1.5);
    ExpectTheTextOfTheCLibrary("%i %lld %hi %zu %lc %x", 1, -2LL, 3, std::size_t{4}, wint_t{'w'}, 255);
}

TEST(VString, FormatsWithinItsBounds) {
    VString text("self");
    text.Format("<%s|%i>", text.CString(), 5);
    EXPECT_STREQ(text.CString(), "<self|5>");
    text.Format("%s", Repeated(5000).c_str());
    EXPECT_EQ(text.Length(), VString::kFormatSize - 1);
    text.Format("%s%lc", "a", static_cast<wint_t>(0x7FFFFFFF));
    EXPECT_STREQ(text.CString(), "") << "the C library refuses the character";
    EXPECT_FALSE(text.FormatWhole("%s%lc", "a", static_cast<wint_t>(0x7FFFFFFF)));
    text = "self";
    EXPECT_TRUE(text.FormatWhole("%s%s", text.CString(), Repeated(5000).c_str()));
    EXPECT_EQ(text, "self" + Repeated(5000));

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
