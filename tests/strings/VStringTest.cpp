#include "foundation/strings/VString.h"

#include "foundation/core/VObjectRef.h"
#include "tests/support/FailingAllocator.h"
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
    EXPECT_EQ(VString(Repeated(255).c_str()).Capacity(), 384U);
    VString appended(Repeated(126).c_str());
    appended << 'y';
    EXPECT_EQ(appended.Capacity(), 128U);
    appended << 'z';
    EXPECT_EQ(appended.Capacity(), 256U);
    appended.Append(Repeated(200).c_str());
    EXPECT_EQ(appended.Capacity(), 328U + 1 + 127); // not a multiple of 128
}

/// Text and reported capacity follow the rules of assigning and appending, whatever the memory block does.
TEST(VString, AgreesWithAModelOverRandomEdits) {
    std::mt19937 random(7);
    VString text;
    std::string model;
    unsigned long capacity = 128;
    for (int i = 0; i < 20000; ++i) {
        std::string const other = Repeated(random() % 90, static_cast<char>('a' + random() % 26));
        unsigned long const offset = model.empty() ? 0 : random() % model.size();
        switch (random() % 8) {
        case 0: {
            std::string const assigned = Repeated(random() % 20000);
            text = assigned.c_str();
            model = assigned;
            capacity = model.size() < capacity ? capacity : (model.size() + 1) / 128 * 128 + 128;
            break;
        }
        case 1:
            text = text.CString() + offset; // a part of its own text
            model.erase(0, offset);
            break;
        case 2:
            text.Set(text.CString(), offset);
            model.resize(offset);
            break;
        default:
            std::string const appended = random() % 4 == 0 ? model.substr(offset) : other;
            text.Append(appended == other ? other.c_str() : text.CString() + offset);
            model += appended;
            capacity = model.size() < capacity ? capacity : model.size() + 1 + 127;
        }
        ASSERT_EQ(text.CString(), model) << i;
        ASSERT_EQ(text.Length(), model.size());
        ASSERT_EQ(text.Capacity(), capacity) << i;
    }
}

TEST(VString, NullTextIsEmptyText) {
    char const* const null = nullptr;
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
    char const* format = null;
    text.Format(format, 1);
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
    EXPECT_EQ(text.GetCharAtIndex(3), '\0');
    EXPECT_FALSE(text == "ab");
    EXPECT_EQ(VString(text).Length(), 5U);
    auto const visible = VObjectRef<VString>::Adopt(text.Copy());
    EXPECT_EQ(visible->Length(), 2U);
    text.Append(Repeated(120).c_str());
    EXPECT_EQ(text.GetCharAtIndex(5), 'x') << "after the kept length";
    VString grown(text);
    grown.Append(grown.CString() + 5);
    EXPECT_EQ(grown.Length(), 245U);
    EXPECT_STREQ(grown.CString(), "ab");
    EXPECT_EQ(grown.GetCharAtIndex(124), '\0') << "growing keeps what stands before the first NUL";
    EXPECT_EQ(grown.GetCharAtIndex(125), 'x');
    EXPECT_EQ(grown.GetCharAtIndex(244), 'x');

    text.Set("abcdef", 3);
    EXPECT_TRUE(text == "abc");
    text.Set("y", VString::kMaxLength + 1);
    EXPECT_EQ(text.Length(), 3U) << "too long is refused";
}

TEST(VString, SetOnItsOwnTextCutsOrUncoversZeroes) {
    VString text("abcdef");
    text.Set(text.CString(), 2);
    EXPECT_TRUE(text == "ab");
    text.Set(text.CString(), 6);
    EXPECT_EQ(text.Length(), 6U);
    for (unsigned long i = 2; i < 6; ++i) {
        EXPECT_EQ(text.GetCharAtIndex(i), '\0') << "old text shows";
    }
    text.Set(text.CString(), 128);
    EXPECT_EQ(text.Length(), 6U) << "nothing at or beyond the capacity";

    text = "abcdef";
    text.Set(text.CString() + 2, 3);
    EXPECT_TRUE(text == "cde");
    text.Set(text.CString() + 1, 1000); // the buffer moves under the text
    EXPECT_STREQ(text.CString(), "de");
    EXPECT_EQ(text.Length(), 1000U);
    EXPECT_EQ(text.GetCharAtIndex(999), '\0');
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
    EXPECT_EQ(text.GetCharAtIndex(4), 'e');
    EXPECT_EQ(text.GetCharAtIndex(ULONG_MAX), '\0');
    EXPECT_EQ(text.Find('c'), 2);
    EXPECT_EQ(text.Find('x'), -1);
    EXPECT_EQ(text.Find('\0'), -1);
    text = 'z';
    EXPECT_STREQ(text.CString(), "z");
    text = '\0';
    EXPECT_TRUE(text.IsEmpty());
}

TEST(VString, ComparesByByte) {
    VString const text("abc");
    EXPECT_TRUE(text == VString("abc"));
    EXPECT_TRUE(text == "abc");
    EXPECT_TRUE(text != "abC");
    EXPECT_TRUE(text != VString("ab"));
    EXPECT_TRUE(text < "abd");
    EXPECT_TRUE(text < VString("abcd"));
    EXPECT_FALSE(text < VString("abc"));
    EXPECT_TRUE(VString("ab") < "\xC3");
    EXPECT_TRUE(text.IsEqual(VString("abc")));
    EXPECT_EQ(VString::stricmp("ABC", "abc"), 0);
    EXPECT_LT(VString::stricmp("ab", "ABC"), 0);
}

TEST(VString, FormatsWithinItsBounds) {
    VString text("self");
    text.Format("<%s|%i>", text.CString(), 5);
    EXPECT_STREQ(text.CString(), "<self|5>");
    text.Format("%s", Repeated(5000).c_str());
    EXPECT_EQ(text.Length(), VString::kFormatSize - 1);
    text.Format("%*i|%.*s|%-3c|%5.1f|%#lx|%%", -4, 7, 2, "abc", 'd', -1.25, 255L);
    EXPECT_STREQ(text.CString(), "7   |ab|d  | -1.2|0xff|%");
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

TEST(VString, AppendsPathComponents) {
    char const* const cases[][3] = {{"a", "b", "a/b"},    {"a/", "b", "a/b"},   {"a", "/b", "a/b"},
                                    {"a/", "/b", "a//b"}, {"", "b", "b"},       {"a", "", "a/"},
                                    {"a\\", "b", "a\\b"}, {"a", "\\b", "a\\b"}, {"", "", ""}};
    for (auto const& [path, component, expected] : cases) {
        VString text(path);
        text.AppendPathComponent(component);
        EXPECT_STREQ(text.CString(), expected);
    }
    VString own;
    own = Repeated(127).c_str(); // so full that the separator alone makes the buffer move
    own.AppendPathComponent(own.CString() + 125);
    EXPECT_EQ(own.CString(), Repeated(127) + "/xx");
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

TEST(VString, FindsPathExtensions) {
    char const* const cases[][2] = {
        {"dir/name.tar.gz", "tar.gz"}, {"dir.d/name", "d/name"}, {"name.", ""}, {"a.PNG", "png"}};
    for (auto const& [path, extension] : cases) {
        EXPECT_FALSE(VString::CStringHasPathExtension(path, extension, false)) << path;
    }
    EXPECT_TRUE(VString::CStringHasPathExtension("dir/name.tar.gz", "gz", false));
    EXPECT_TRUE(VString::CStringHasPathExtension(".profile", "profile", false));
    EXPECT_TRUE(VString::CStringHasPathExtension("a.PNG", "png", true));
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

TEST_F(VStringTest, StaysUsableWhenMemoryRunsOut) {
    VString saved(Repeated(1000).c_str());
    SaveChunk(saved);
    OpenChunk(0);
    VString survivor;
    for (bool const isRecycling : {true, false}) {
        VString::ms_bRecyclingEnabled = isRecycling;
        testing_support::FailEachAllocation([&] {
            survivor = "short";
            for (int i = 0; i < 100; ++i) {
                survivor << "0123456789" << i;
            }
            survivor.AppendPathComponent("component");
            survivor.AppendPathComponent(survivor.CString() + 1);
            survivor.Set("a longer text than before, to be cut", 300);
            VString copy(survivor);
            copy.Format("%0500i", 7);
            copy << copy.CString();
            auto const made = VObjectRef<VString>::Adopt(VString::NewString(copy.CString()));
            made->DeleteLastPathComponent();
            made->operator<<(copy);
            EXPECT_EQ(made->Find('#'), -1);
            EXPECT_TRUE(made->Length() < made->Capacity() || made->Capacity() == 0);
            EXPECT_EQ(made->GetCharAtIndex(made->Length()), '\0');
            VString read;
            m_file.Seek(8, VFile::kFromStart);
            bool const isRead = read.Serialize(m_file);
            EXPECT_EQ(isRead, read == saved);
        });
    }
    VString::ms_bRecyclingEnabled = true;
    survivor = "still works";
    EXPECT_STREQ(survivor.CString(), "still works");
}

} // namespace
