#include "foundation/strings/VColour.h"
#include "foundation/strings/VPoint.h"
#include "foundation/strings/VStringTokenizer.h"
#include "tests/strings/SavedForms.h"

#include <string>
#include <thread>
#include <vector>

namespace {

using namespace VFoundation;

/// All tokens, each in angle brackets.
std::string Tokens(VStringTokenizer& tokens, bool keepQuotes = false) {
    std::string all;
    VString token;
    while (tokens.HasMoreTokens() && tokens.GetNextToken(token, keepQuotes)) {
        all += std::string("<") + token.CString() + ">";
    }
    EXPECT_EQ(tokens.GetNextToken(false), nullptr);
    return all;
}

TEST(StringTokenizer, SplitsAtDelimitersAndQuotes) {
    struct {
        char const* text;
        char const* expected;
        char const* quotes = "\"'";
        char const* delimiters = ",;";
    } const cases[] = {
        {"a,,b", "<a><><b>"},
        {"a,", "<a>"},
        {",a", "<><a>"},
        {"", ""},
        {",", "<>"},
        {"a;b,c", "<a><b><c>"},
        {"\"x,y\",z", "<x,y><z>"},
        {"'a\"b',c", ""},
        {"a\"b", ""},
        {"\"ab\"c", ""},
        {"\"ab", ""},
        {"x,\"ab", "<x>"},
        {"\"\",a", "<><a>"},
        {"\"a'", ""},
        {"\"a\"\"b\"", ""}, // a quote inside the token
        {"a\"b,c", "<a\"b><c>", ""},
        {"a,b", "<a,b>", "", ""},
    };
    for (auto const& [text, expected, quotes, delimiters] : cases) {
        VStringTokenizer tokens;
        tokens.SetStringToTokenize(VString(text));
        tokens.SetTokenizationCharacters(delimiters);
        tokens.SetQuoteCharacters(quotes);
        long const count = tokens.GetNumberOfTokens();
        std::string const found = Tokens(tokens);
        EXPECT_EQ(found, expected) << text;
        EXPECT_EQ(count, std::count(found.begin(), found.end(), '<')) << text;
        EXPECT_EQ(tokens.GetNumberOfTokens(), count) << "wherever it stands";
    }
}

TEST(StringTokenizer, KeepsQuotesAndCountsOnlyWhenAsked) {
    VStringTokenizer tokens("'a,b',c", ',');
    EXPECT_EQ(tokens.LastCount(), 3);
    tokens.SetQuoteCharacter('\'');
    EXPECT_EQ(Tokens(tokens, true), "<'a,b'><c>");
    tokens.SetStringToTokenize("x y");
    EXPECT_EQ(tokens.LastCount(), 3);
    tokens.SetTokenizationCharacter(' ');
    VString* const token = tokens.GetNextToken(false);
    ASSERT_NE(token, nullptr);
    EXPECT_STREQ(token->CString(), "x");
    token->Release();
    EXPECT_EQ(tokens.GetNumberOfTokens(), 2);
    VString untouched("old");
    EXPECT_TRUE(tokens.GetNextToken(untouched, false));
    EXPECT_FALSE(tokens.GetNextToken(untouched, false));
    EXPECT_STREQ(untouched.CString(), "y");
    VStringTokenizer blank;
    EXPECT_FALSE(blank.HasMoreTokens());
    EXPECT_EQ(VStringTokenizer(nullptr, ',').LastCount(), 0);
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
    EXPECT_EQ(colour.red16, 65280);
    EXPECT_EQ(colour.green16, 0);
    EXPECT_EQ(colour.blue16, 32768);
    SColour const packed(0xFF102030UL);
    EXPECT_STREQ(SColour::GetColourAsString(packed, 1).CString(), "[r:48 g:32 b:16 a:255]");
    EXPECT_EQ(packed.red16, 0x3000);
    EXPECT_STREQ(packed.GetColourAsString(2).CString(), "");
}

TEST_F(Colours, AreReadFromText) {
    struct {
        char const* text;
        char const* expected;
    } const cases[] = {
        {"10, 20, 30", "10, 20, 30, 255"},
        {"[r:1 g:2 b:3 a:4]", "1, 2, 3, 4"},
        {"1,2,3,4,5", "1, 2, 3, 4"},
        {"-5,x,999999999999999999999,", "5, 0, 255, 255"},
        {"1 2 3 ", "1, 2, 3, 255"},
        {"dark grey", "64, 64, 64, 255"},
        {"TRANSPARENT", "0, 0, 0, 0"},
        {"1 2", "9, 8, 7, 6"},
        {"1,2", "9, 8, 7, 6"},
        {"LightGrey", "9, 8, 7, 6"},
        {"", "9, 8, 7, 6"},
    };
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
    ASSERT_EQ(VColour::ms_namedColoursArray->Count(), 35);
    EXPECT_EQ(VColour::ms_namedColoursArray->ObjectAtIndexTyped(0), VColour::Aqua());
    EXPECT_EQ(VColour::ms_namedColoursArray->ObjectAtIndexTyped(13), VColour::LightGrey());
    EXPECT_EQ(VColour::ms_namedColoursArray->ObjectAtIndexTyped(34), VColour::CarrawayViolet());
    EXPECT_EQ(VColour::GetColourNamed("LIGHT GREY"), VColour::LightGrey());
    EXPECT_EQ(VColour::GetColourNamed("LightGrey"), nullptr);
    EXPECT_EQ(VColour::GetColourNamed(""), nullptr);
    EXPECT_EQ(VColour::GetColourNamed(nullptr), nullptr);
    EXPECT_EQ(Text(*VColour::LightBlue()), "128, 128, 255, 255");
    EXPECT_EQ(Text(*VColour::Orange()), "255, 128, 0, 255");
    EXPECT_STREQ(VColour::QuillmarkBlue()->GetName(), "Quillmark Blue");
    EXPECT_TRUE(VColour::Cyan()->IsEqual(*VColour::Aqua())) << "names do not count";
}

TEST_F(Colours, AreMadeAgainAfterAnEnd) {
    VColour* const kept = VColour::Gold();
    kept->Retain();
    VColour::UninitializeClass();
    VColour::UninitializeClass();
    EXPECT_EQ(VColour::GetColourNamed("gold"), nullptr);
    EXPECT_NE(VColour::Gold(), kept);
    EXPECT_EQ(VColour::GetColourNamed("gold"), nullptr) << "there is no array";
    VColour::InitializeClass();
    EXPECT_NE(VColour::Red(), nullptr);
    EXPECT_EQ(VColour::ms_namedColoursArray->Count(), 1);
    EXPECT_EQ(kept->RetainCount(), 1);
    kept->Release();
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
    for (std::thread& thread : threads) {
        thread.join();
    }
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
    ReadXML(read, "<VColour red='300' alpha='-1'/>");
    EXPECT_EQ(Text(read), "255, 2, 3, 0");
    EXPECT_EQ(read.red16, 65280);
    ReadXML(read, "<VColour red='7' colour='navy'/>");
    EXPECT_EQ(Text(read), "0, 0, 128, 255");

    VColour* const copy = written.Copy();
    EXPECT_TRUE(copy->IsEqual(written));
    EXPECT_STREQ(copy->GetName(), "mine");
    copy->SetName(nullptr);
    EXPECT_STREQ(copy->GetName(), "");
    copy->Release();
    EXPECT_FALSE(written.IsEqual(VPoint()));
}

} // namespace
