// Text: paths, tokens, colours and numbers, each against a small reference that does the same on std::string. The
// input is two texts, divided by its first line feed.

#include "foundation/host/VFileManager.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/VStringTokenizer.h"
#include "foundation/strings/internal/NumberText.h"
#include "foundation/strings/values/VColour.h"
#include "foundation/strings/values/VURL.h"
#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

using namespace VFoundation;
using fuzzing::Require;
using Text = std::string;
using Tokens = std::vector<Text>;

namespace {

// Paths

Text Joined(Text path, Text const& component) {
    auto const isSeparator = [](char c) { return c == '/' || c == '\\'; };
    bool const needsOne =
        !path.empty() && !isSeparator(path.back()) && (component.empty() || !isSeparator(component[0]));
    return path + (needsOne ? "/" : "") + component;
}

Text Parent(Text const& path) {
    for (char const separator : {'\\', '/'}) {
        if (std::size_t const at = path.rfind(separator); at != path.npos) {
            return path.substr(0, at);
        }
    }
    return path;
}

std::optional<Text> Extension(Text const& path) {
    std::size_t const dot = path.rfind('.');
    std::size_t const slash = path.rfind('/');
    if (dot == path.npos || dot + 1 == path.size() || (slash != path.npos && dot < slash)) {
        return std::nullopt;
    }
    return path.substr(dot + 1);
}

Text Lower(Text text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

void CheckPaths(Text const& path, Text const& other) {
    VString joined(path.c_str());
    joined.AppendPathComponent(other.c_str());
    Require(Joined(path, other) == joined.CString(), "a component is appended");
    VString doubled(path.c_str());
    doubled.AppendPathComponent(doubled.CString());
    Require(Joined(path, path) == doubled.CString(), "a string is appended to itself");
    VString parent(path.c_str());
    parent.DeleteLastPathComponent();
    Require(Parent(path) == parent.CString() && Parent(path).size() == parent.Length(), "the parent is left");
    auto const extension = Extension(path);
    Require(VString::CStringHasPathExtension(path.c_str(), other.c_str(), false) == (extension == other),
            "the extension is found");
    Require(VString::CStringHasPathExtension(path.c_str(), other.c_str(), true) ==
                (extension && Lower(*extension) == Lower(other)),
            "the extension is found in any case");
    Text separators = path;
    VFileManager::MakePathUseHostSeparator(separators.data());
    Text expected = path;
    std::replace(expected.begin(), expected.end(), '\\', '/');
    Require(separators == expected, "separators are the host's");
}

// Tokens

bool Has(Text const& set, char c) {
    return set.find(c) != set.npos;
}

/// The token at `start` with its quotes, or nothing. A token is either quoted from quote to quote, or free of quotes.
std::optional<Text> TokenAt(Text const& text, std::size_t start, Text const& delimiters, Text const& quotes) {
    if (start >= text.size()) {
        return std::nullopt;
    }
    std::size_t end = start;
    if (Has(quotes, text[start])) {
        // Another kind of quote inside is an error, and so is anything but a delimiter after the end.
        for (++end; end < text.size() && !Has(quotes, text[end]); ++end) {
        }
        if (end == text.size() || text[end] != text[start]) {
            return std::nullopt;
        }
        ++end;
    } else {
        for (; end < text.size() && !Has(delimiters, text[end]) && !Has(quotes, text[end]); ++end) {
        }
    }
    if (end < text.size() && (Has(quotes, text[end]) || !Has(delimiters, text[end]))) {
        return std::nullopt;
    }
    return text.substr(start, end - start);
}

Tokens TokensOf(Text const& text, Text const& delimiters, Text const& quotes, bool keepQuotes) {
    Tokens tokens;
    std::size_t at = 0;
    while (auto const token = TokenAt(text, at, delimiters, quotes)) {
        bool const isQuoted = !token->empty() && Has(quotes, (*token)[0]);
        tokens.push_back(isQuoted && !keepQuotes ? token->substr(1, token->size() - 2) : *token);
        at += token->size() + 1;
    }
    return tokens;
}

void CheckTokens(Text const& text, Text const& characters) {
    Text const delimiters = characters.substr(0, characters.size() / 2);
    Text const quotes = characters.substr(characters.size() / 2);
    for (bool const keepQuotes : {false, true}) {
        Tokens const expected = TokensOf(text, delimiters, quotes, keepQuotes);
        VStringTokenizer tokenizer;
        tokenizer.SetStringToTokenize(text.c_str());
        tokenizer.SetTokenizationCharacters(delimiters.c_str());
        tokenizer.SetQuoteCharacters(quotes.c_str());
        Require(tokenizer.GetNumberOfTokens() == static_cast<long>(expected.size()), "tokens are counted");
        VString token;
        for (Text const& one : expected) {
            Require(tokenizer.HasMoreTokens(), "there is another token");
            Require(tokenizer.GetNextToken(token, keepQuotes), "the token is given");
            Require(one == token.CString() && one.size() == token.Length(), "the token is the text between");
        }
        Require(!tokenizer.GetNextToken(token, keepQuotes), "tokens end");
    }
}

// Colours

void CheckColour(Text const& text) {
    SColour colour(1, 2, 3, 4);
    colour.SetColourFromString(text.c_str());
    Tokens parts = TokensOf(text, ",", "", false);
    if (parts.size() < 3) {
        parts = TokensOf(text, " ", "", false);
    }
    int expected[] = {1, 2, 3, 4};
    if (parts.size() >= 3) {
        std::fill_n(expected, 3, 0);
        expected[3] = 255;
        for (std::size_t i = 0; i < std::min<std::size_t>(4, parts.size()); ++i) {
            std::size_t const digit = parts[i].find_first_of("0123456789");
            long const number = digit == Text::npos ? 0 : std::strtol(parts[i].c_str() + digit, nullptr, 10);
            expected[i] = static_cast<int>(std::min(number, 255L));
        }
    } else if (VColour const* const named = VColour::GetColourNamed(text.c_str())) {
        Require(Lower(named->GetName()) == Lower(text), "a named colour has that name");
        expected[0] = named->red;
        expected[1] = named->green;
        expected[2] = named->blue;
        expected[3] = named->alpha;
    }
    SColour const wanted(expected[0], expected[1], expected[2], expected[3]);
    Require(colour.IsSameColour(wanted), "the colour that the text means");
    for (long const style : {SColour::eList, SColour::eTagged}) {
        SColour again(9, 9, 9, 9);
        again.SetColourFromString(colour.GetColourAsString(style));
        Require(again.IsSameColour(colour), "a written colour reads back");
    }
}

// Numbers

void CheckNumbers(Text const& text) {
    char const* const c = text.c_str();
    long const whole = std::clamp(std::strtol(c, nullptr, 10), long{INT_MIN}, long{INT_MAX});
    Require(Int32FromText(c) == whole, "a 32-bit number");
    double const number = DoubleFromText(c);
    double const reference = std::strtod(c, nullptr);
    Require(number == reference || (std::isnan(number) && std::isnan(reference)), "a double");
    char written[NumberText::kSize];
    std::snprintf(written, sizeof written, "%.16g", number);
    Require(std::strcmp(NumberText(number).CString(), written) == 0, "a double as text");
    std::snprintf(written, sizeof written, "%g", static_cast<double>(static_cast<float>(number)));
    Require(std::strcmp(NumberText(static_cast<float>(number)).CString(), written) == 0, "a float as text");

    char const* const digits = c + std::strspn(c, " \t");
    errno = 0;
    bool const startsWithSpace = std::isspace(static_cast<unsigned char>(*digits)) != 0;
    long long const expected = startsWithSpace ? 0 : std::strtoll(digits, nullptr, 10);
    bool const fits = errno == 0;
    long long value = 1;
    Require(Int64FromText(c, value) == fits, "whether a 64-bit number fits");
    Require(value == (fits ? expected : 0), "a 64-bit number");
    Require(std::to_string(value) == NumberText(value).CString(), "an integer as text");
    VString appended("n");
    appended << static_cast<int>(whole);
    Require(std::string("n").append(std::to_string(whole), 0, 10) == appended.CString(),
            "ten characters of a number");
}

void CheckStrings(Text const& text, Text const& other) {
    VString string(text.c_str());
    std::size_t const cut = other.size() % (text.size() + 1);
    string.Append(string.CString() + cut);
    Require(text + text.substr(cut) == string.CString(), "a string's own text is appended");
    string = string.CString() + cut;
    Require((text + text.substr(cut)).substr(cut) == string.CString(), "a string's own text is assigned");
    Require(string.Length() == std::strlen(string.CString()) && string.Length() < string.Capacity(),
            "length and capacity hold");
    Require((VString(text.c_str()) < other.c_str()) == (std::strcmp(text.c_str(), other.c_str()) < 0),
            "order");
}

void CheckUrl(Text const& text) {
    VURL const url(text.c_str());
    if (!url.IsValid()) {
        Require(url.Scheme().IsEmpty() && url.Host().IsEmpty() && url.Path().IsEmpty() &&
                    url.Query().IsEmpty() && url.Port() == -1,
                "no parts of what is no URL");
        return;
    }
    Text const scheme = url.Scheme().CString();
    Require(!scheme.empty() && text.compare(0, scheme.size() + 1, scheme + ":") == 0,
            "the scheme comes first");
    for (VString const& part : {url.Host(), url.Path(), url.Query()}) {
        Require(text.find(part.CString(), scheme.size()) != text.npos, "parts stand as in the text");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    Text const input(bytes, bytes + size);
    std::size_t const divide = std::min(input.find('\n'), size);
    Text const text = input.substr(0, divide).c_str(); // up to a zero
    Text const other = input.substr(std::min(divide + 1, size)).c_str();
    CheckPaths(text, other);
    CheckTokens(text, other);
    CheckColour(text);
    CheckNumbers(text);
    CheckStrings(text, other);
    CheckUrl(text);
    return 0;
}
