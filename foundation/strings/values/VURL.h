#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/TSavedObject.h"

#include <utility>

namespace VFoundation {

/// A URL: any text, split into parts when it is a valid absolute URI by the generic syntax of RFC 3986. Files hold
/// the text as "url".
///
///     VURL url("http://user@example.org:8080/a/b?q=1#top");
///     url.Host();                                          // "example.org"
///
/// Parts are as in the text: nothing is decoded or folded to lower case, and an IPv6 host keeps its brackets. A text
/// that is not valid (a relative reference, a blank, a byte above 127, a malformed escape, host or port) has no parts.
///
/// Ownership: owns its text.
/// Threads: one thread at a time.
class VFOUNDATION_API VURL : public Registered<VURL, TSavedObject<VURL>> {
  public:
    static constexpr char const* kClassName = "VURL";
    static VClass* ms_theClass;

    VURL() : VURL(nullptr, nullptr) {}
    explicit VURL(char const* text) : VURL(nullptr, text) {}
    VURL(VURL const& other) : VURL(nullptr, other.m_text.CString()) {}
    VURL(VURL&& other) noexcept : Registered(LoadClassSlot(ms_theClass)), m_text(std::move(other.m_text)) {}
    VURL& operator=(VURL const&) = default;
    VURL& operator=(VURL&&) noexcept = default;
    [[nodiscard]] static VURL* New() { return new VURL; }

    VString const& Text() const noexcept { return m_text; }
    void SetText(char const* text) { m_text = text; }

    bool IsValid() const;
    VString Scheme() const;
    VString Host() const;
    /// -1 when the URL names none.
    long Port() const;
    VString Path() const;
    /// Without its question mark.
    VString Query() const;

    bool operator==(VURL const& other) const { return m_text == other.m_text; }

  protected:
    /// For derived classes, with their record or null.
    VURL(VClass* cls, char const* text) : Registered(cls), m_text(text) {}

  private:
    friend class TSavedObject<VURL>;
    struct Fields;

    VString m_text;
};

extern template class TSavedObject<VURL>;

} // namespace VFoundation
