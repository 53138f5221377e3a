#include "foundation/strings/VStringTokenizer.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

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

TEST(VStringTokenizer, SplitsAtDelimitersAndQuotes) {
    // A text, the count of its tokens and the tokens.
    std::istringstream rows(R"( a,,b 3<a><><b>  a, 1<a>  ,a 2<><a>  , 1<>  a;b,c 3<a><b><c>  "x,y",z 2<x,y><z>
        'a"b',c 0  a"b 0  "ab"c 0  "ab 0  x,"ab 1<x>  "",a 2<><a>  "a' 0  "a""b" 0  a"b" 0 )");
    for (std::string text, expected; rows >> text >> expected;) {
        EXPECT_EQ(Tokens(text.c_str(), ",;", "\"'"), expected) << text;
    }
    EXPECT_EQ(Tokens("", ",", ""), "0");
    EXPECT_EQ(Tokens("a\"b,c", ",", ""), "2<a\"b><c>") << "no quotes";
    EXPECT_EQ(Tokens("a,b", "", ""), "1<a,b>") << "no delimiters";
    EXPECT_EQ(Tokens("'a,b',c", ",", "'", true), "2<'a,b'><c>");
    EXPECT_FALSE(VStringTokenizer().HasMoreTokens());
}

TEST(VStringTokenizer, CountsOnlyWhenAsked) {
    VStringTokenizer tokens("a,b,c", ',');
    tokens.SetStringToTokenize("x y");
    tokens.SetTokenizationCharacter(' ');
    auto const first = VObjectRef<VString>::Adopt(tokens.GetNextToken(false));
    EXPECT_EQ(tokens.LastCount(), 3);
    EXPECT_EQ(tokens.GetNumberOfTokens(), 2);
    VString token;
    EXPECT_TRUE(tokens.GetNextToken(token, false)) << "counting does not move";
    EXPECT_FALSE(tokens.GetNextToken(token, false));
    EXPECT_STREQ(first->CString(), "x");
    EXPECT_STREQ(token.CString(), "y");
}

} // namespace
