#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"

#include <cstdint>

namespace VFoundation {

/// Splits text into tokens at any of a set of delimiters. Inside a quoted token delimiters are text.
///
///     VStringTokenizer tokens("a,\"b,c\"", ',');
///     tokens.SetQuoteCharacter('"');
///     VString token;
///     while (tokens.GetNextToken(token, false)) { ... }       // a, then b,c
///
/// Two adjacent delimiters have an empty token between them; nothing follows a final delimiter. Without
/// delimiters the text is one token; without quote characters quotes are text.
///
/// The first malformed token ends the tokens: a quote inside it, a quote that is not closed or closed by another quote
/// character, text after a closing quote.
///
/// Ownership: copies text and characters; `GetNextToken(bool)` gives an owned string.
/// Threads: one thread at a time.
class VFOUNDATION_API VStringTokenizer : public Registered<VStringTokenizer, VObject> {
  public:
    static constexpr char const* kClassName = "VStringTokenizer";
    static VClass* ms_theClass;

    explicit VStringTokenizer(VClass* cls = nullptr) : Registered(cls) {}
    /// Also counts the tokens. Null is the empty text; the zero character is no delimiter.
    VStringTokenizer(char const* text, char delimiter) : VStringTokenizer(nullptr, text, delimiter) {}
    VStringTokenizer(VStringTokenizer const&) = delete;
    VStringTokenizer& operator=(VStringTokenizer const&) = delete;
    [[nodiscard]] static VStringTokenizer* New() { return new VStringTokenizer; }

    /// Starts again on another text. The count of tokens stays that of the old one until
    /// `GetNumberOfTokens`.
    void SetStringToTokenize(char const* text);
    void SetStringToTokenize(VString const& text);
    /// Each replaces the set.
    void SetTokenizationCharacter(char delimiter);
    void SetTokenizationCharacters(VString const& delimiters);
    void SetQuoteCharacter(char quote);
    void SetQuoteCharacters(VString const& quotes);

    /// Counts the tokens of the whole text, wherever the tokenizer stands, and keeps the count.
    long GetNumberOfTokens();
    /// What the last counting found; 0 before.
    long LastCount() const noexcept { return m_count; }

    bool HasMoreTokens();
    /// Sets `token` and moves on; false, with `token` untouched, when there is none. A quoted token loses its quotes
    /// unless `keepQuotes`.
    bool GetNextToken(VString& token, bool keepQuotes);
    /// The token as a new string (owned); null when there is none. Throws as `VString::New` does.
    [[nodiscard]] VString* GetNextToken(bool keepQuotes);

  protected:
    /// For derived classes, with their record or null.
    VStringTokenizer(VClass* cls, char const* text, char delimiter);

  private:
    bool FindToken(std::uint32_t start);

    std::int32_t m_count = 0;
    std::uint32_t m_position = 0;
    std::uint32_t m_tokenLength = 0; // of the token last found, quotes included
    bool m_isQuoted = false;         // it ended with a closing quote
    VObjectRef<VString> m_text;      // null until set; without NULs
    VObjectRef<VString> m_delimiters;
    VObjectRef<VString> m_quotes;
};

} // namespace VFoundation
