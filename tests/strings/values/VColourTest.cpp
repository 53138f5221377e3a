#include "foundation/strings/VStringTokenizer.h"
#include "foundation/strings/values/VColour.h"
#include "tests/support/SavedForms.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace VFoundation;

/// The count of tokens and each of them in angle brackets.
std::string Tokens(char const* text, char const* delimiters, char const* quotes, bool keepQuotes = false) {
    VStringTokenizer tokens;
    tokens.SetStringToTokenize(VString(text));
    tokens.SetTokenizationCharacters(delimiters);
    tokens.SetQuoteCharacters(quotes);
    std::string all = std::to_string(tokens.GetNumberOfTokens());
    VString token;
    while (tokens.HasMoreTokens() && tokens.GetNextToken(token, keepQuotes)) {
        all += std::string("<") + token.CString() + ">";
    }
    EXPECT_EQ(tokens.GetNextToken(false), nullptr);
    return all;
}

TEST(StringTokenizer, SplitsAtDelimitersAndQuotes) {
    // A text, the count of its tokens and the tokens.
    std::istringstream rows(R"( a,,b 3<a><><b>  a, 1<a>  ,a 2<><a>  , 1<>  a;b,c 3<a><b><c>  "x,y",z 2<x,y><z>
        'a"b',c 0  a"b 0  "ab"c 0  "ab 0  x,"ab 1<x>  "",a 2<><a>  "a' 0  "a""b" 0 )");
    for (std::string text, expected; rows >> text >> expected;) {
        EXPECT_EQ(Tokens(text.c_str(), ",;", "\"'"), expected) << text;
    }
    EXPECT_EQ(Tokens("", ",", ""), "0");
    EXPECT_EQ(Tokens("a\"b,c", ",", ""), "2<a\"b><c>") << "no quotes";
    EXPECT_EQ(Tokens("a,b", "", ""), "1<a,b>") << "no delimiters";
    EXPECT_EQ(Tokens("'a,b',c", ",", "'", true), "2<'a,b'><c>");
    EXPECT_FALSE(VStringTokenizer().HasMoreTokens());
}

TEST(StringTokenizer, CountsOnlyWhenAsked) {
    VStringTokenizer tokens("a,b,c", ',');
    tokens.SetStringToTokenize("x y");
    tokens.SetTokenizationCharacter(' ');
    auto const first = VObjectRef<VString>::Adopt(tokens.GetNextToken(false));
    EXPECT_EQ(tokens.LastCount(), 3);
    EXPECT_EQ(tokens.GetNumberOfTokens(), 2);
    VString token;
    EXPECT_TRUE(tokens.GetNextToken(token, false)) << "counting does not move";
    EXPECT_FALSE(tokens.GetNextToken(token, false));
    EXPECT_TRUE(*first == "x" && token == "y");
}

class Colours : public testing_support::SavedForms {
  protected:
    Colours() {
        VColour::TheClass();
        VColour::UninitializeClass();
        VColour::InitializeClass();
        VColour::InitAllNamedColours();
    }
    ~Colours() override { VColour::UninitializeClass(); }

    static std::string Text(SColour const& colour) { return colour.GetColourAsString(0).CString(); }
};

TEST_F(Colours, ClampAndKeepSixteenBitCopies) {
    SColour const colour(300, -4, 128, 255);
    EXPECT_EQ(Text(colour), "255, 0, 128, 255");
    EXPECT_TRUE(colour.red16 == 65280 && colour.green16 == 0 && colour.blue16 == 32768);
    EXPECT_STREQ(SColour(0xFF102030UL).GetColourAsString(1).CString(), "[r:48 g:32 b:16 a:255]");
    EXPECT_STREQ(colour.GetColourAsString(2).CString(), "");
}

TEST_F(Colours, AreReadFromText) {
    char const* const cases[][2] = {{"10, 20, 30", "10, 20, 30, 255"},
                                    {"[r:1 g:2 b:3 a:4]", "1, 2, 3, 4"},
                                    {"1,2,3,4,5", "1, 2, 3, 4"},
                                    {"-5,x,99999999999999999999,", "5, 0, 255, 255"},
                                    {"1 2 3 ", "1, 2, 3, 255"},
                                    {"dark grey", "64, 64, 64, 255"},
                                    {"TRANSPARENT", "0, 0, 0, 0"},
                                    {"1 2", "9, 8, 7, 6"},
                                    {"1,2", "9, 8, 7, 6"},
                                    {"LightGrey", "9, 8, 7, 6"},
                                    {"", "9, 8, 7, 6"}};
    for (auto const& [text, expected] : cases) {
        SColour colour(9, 8, 7, 6);
        colour.SetColourFromString(text);
        EXPECT_EQ(Text(colour), expected) << text;
    }
    SColour colour(1, 2, 3, 4);
    colour.SetColourFromString("White");
    EXPECT_EQ(colour.red16, 0x100) << "a name leaves the copies";
}

TEST_F(Colours, HaveNamesInTheirOrder) {
    auto const& named = *VColour::ms_namedColoursArray;
    ASSERT_EQ(named.Count(), 35);
    EXPECT_EQ(named.ObjectAtIndexTyped(0), VColour::Aqua());
    EXPECT_EQ(named.ObjectAtIndexTyped(34), VColour::CarrawayViolet());
    EXPECT_EQ(VColour::GetColourNamed("LIGHT GREY"), VColour::LightGrey());
    EXPECT_FALSE(VColour::GetColourNamed("LightGrey") || VColour::GetColourNamed(nullptr));
    EXPECT_EQ(Text(*VColour::LightBlue()) + " " + Text(*VColour::Orange()),
              "128, 128, 255, 255 255, 128, 0, 255");
    EXPECT_TRUE(VColour::Cyan()->IsEqual(*VColour::Aqua())) << "names do not count";
}

TEST_F(Colours, AreMadeAgainAfterAnEnd) {
    VObjectRef<VColour> const kept(VColour::Gold());
    VColour::UninitializeClass();
    VColour::UninitializeClass();
    EXPECT_EQ(kept->RetainCount(), 1);
    EXPECT_NE(VColour::Gold(), kept.Get());
    EXPECT_EQ(VColour::GetColourNamed("gold"), nullptr) << "there is no array";
    VColour::InitializeClass();
    VColour const* const red = VColour::Red();
    EXPECT_EQ(VColour::GetColourNamed("red"), red);
}

TEST_F(Colours, AreTheSameForEveryThread) {
    VColour::ReleaseAllStaticColours();
    VColour::InitializeClass();
    std::vector<VColour*> seen(4);
    std::vector<std::thread> threads;
    for (VColour*& colour : seen) {
        threads.emplace_back([&colour] {
            VColour::InitAllNamedColours();
            colour = VColour::GetColourNamed("slate");
        });
    }
    std::for_each(threads.begin(), threads.end(), [](std::thread& thread) { thread.join(); });
    EXPECT_EQ(seen, std::vector<VColour*>(4, VColour::Slate()));
    EXPECT_EQ(VColour::ms_namedColoursArray->Count(), 35);
}

TEST_F(Colours, TravelThroughXMLAndCopy) {
    VColour const written(1, 2, 3, 4, "mine");
    EXPECT_NE(XMLOf(written).find("colour=\"[r:1 g:2 b:3 a:4]\""), std::string::npos);
    VColour read;
    ReadXML(read, XMLOf(written));
    EXPECT_TRUE(read.IsEqual(written));
    EXPECT_STREQ(read.GetName(), "") << "a name is not saved";
    ReadXML(read, "<R><VColour red='300' alpha='-1'/></R>");
    EXPECT_EQ(Text(read), "255, 2, 3, 0");
    EXPECT_EQ(read.red16, 65280);
    ReadXML(read, "<R><VColour red='7' colour='navy'/></R>");
    EXPECT_EQ(Text(read), "0, 0, 128, 255");
    auto const copy = VObjectRef<VColour>::Adopt(written.Copy());
    EXPECT_TRUE(copy->IsEqual(written));
    EXPECT_STREQ(copy->GetName(), "mine");
}

} // namespace
