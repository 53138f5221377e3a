#include "foundation/strings/VStringTokenizer.h"

namespace VFoundation {

namespace {

/// Makes the string on first use.
template <class Text>
void Assign(VObjectRef<VString>& string, Text const& text) {
    if (!string) {
        string.Allocate();
    }
    *string = text;
}

bool IsIn(VObjectRef<VString> const& set, char character) {
    return set && set->Find(character) >= 0;
}

} // namespace

VClass* VStringTokenizer::ms_theClass = nullptr;

VStringTokenizer::VStringTokenizer(VClass* cls, char const* text, char delimiter) : Registered(cls) {
    SetStringToTokenize(text);
    SetTokenizationCharacter(delimiter);
    GetNumberOfTokens();
    m_tokenLength = 0;
}

void VStringTokenizer::SetStringToTokenize(char const* text) {
    Assign(m_text, text);
    m_position = 0;
    m_tokenLength = 0;
}

void VStringTokenizer::SetStringToTokenize(VString const& text) {
    SetStringToTokenize(text.CString());
}

void VStringTokenizer::SetTokenizationCharacter(char delimiter) {
    Assign(m_delimiters, delimiter);
}

void VStringTokenizer::SetTokenizationCharacters(VString const& delimiters) {
    Assign(m_delimiters, delimiters);
}

void VStringTokenizer::SetQuoteCharacter(char quote) {
    Assign(m_quotes, quote);
}

void VStringTokenizer::SetQuoteCharacters(VString const& quotes) {
    Assign(m_quotes, quotes);
}

long VStringTokenizer::GetNumberOfTokens() {
    m_count = 0;
    for (std::uint32_t position = 0; FindToken(position); position += m_tokenLength + 1) {
        ++m_count;
    }
    return m_count;
}

bool VStringTokenizer::HasMoreTokens() {
    return FindToken(m_position);
}

bool VStringTokenizer::GetNextToken(VString& token, bool keepQuotes) {
    if (!FindToken(m_position)) {
        return false;
    }
    std::uint32_t const quote = m_isQuoted && !keepQuotes ? 1 : 0;
    token.Set(m_text->CString() + m_position + quote, m_tokenLength - 2 * quote);
    m_position += m_tokenLength + 1;
    return true;
}

VString* VStringTokenizer::GetNextToken(bool keepQuotes) {
    if (!HasMoreTokens()) {
        return nullptr;
    }
    auto token = VObjectRef<VString>::Adopt(VString::New());
    GetNextToken(*token, keepQuotes);
    return token.Detach();
}

/// Measures the token at `start`. False when there is none or it is malformed.
bool VStringTokenizer::FindToken(std::uint32_t start) {
    m_tokenLength = 0;
    m_isQuoted = false;
    if (!m_text || start >= m_text->Length()) {
        return false;
    }
    char openQuote = '\0';
    for (char const* c = m_text->CString() + start; *c; ++c, ++m_tokenLength) {
        if (IsIn(m_quotes, *c)) {
            if (openQuote) {
                if (*c != openQuote) {
                    return false;
                }
                openQuote = '\0';
                m_isQuoted = true;
            } else if (m_tokenLength == 0) {
                openQuote = *c;
            } else {
                return false;
            }
        } else if (IsIn(m_delimiters, *c)) {
            if (!openQuote) {
                return true;
            }
        } else if (m_isQuoted) {
            return false;
        }
    }
    return !openQuote && m_tokenLength > 0;
}

} // namespace VFoundation
