#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/InlineBlock.h"

#include <atomic>
#include <compare>
#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>

namespace VFoundation {

template <class T>
class VObjectRingBufferTmpl;

namespace detail {

/// Text of another kind than a C string, such as `std::string` and `std::string_view`. A `VString`, being an object
/// too, is not meant.
template <class Text>
concept StdText = std::is_convertible_v<Text const&, std::string_view> &&
                  !std::is_convertible_v<Text const&, char const*> &&
                  !std::is_base_of_v<VObject, Text>;

} // namespace detail

/// The library's string: owned, NUL-terminated 8-bit text with a length and a capacity, also used for paths.
/// No encoding is assumed: comparison is byte-wise.
///
///     VString path("/opt/app");
///     path.AppendPathComponent("icons");      // "/opt/app/icons"
///     path << '/' << 42;                      // numbers and characters append too
///     path.View().starts_with("/opt");        // what std::string_view can do
///
/// Text comes as a C string, a `std::string`, a `std::string_view` or a `VString`; it ends at its first NUL.
/// Text given to an operation may be a part of the string itself. Null text is empty text, also as a format. When
/// memory runs out, the string is left without a buffer (length and capacity 0) and stays usable. Text that would
/// make it longer than `kMaxLength` is refused and leaves the string as it was. The length is the position of the
/// first NUL, except after `Set`.
///
/// There is no conversion to `char const*`; `CString()` gives one.
///
/// Texts of less than 127 bytes need no memory besides the object. As a key of a hashed container:
///
///     std::unordered_map<VString, int, std::hash<VString>, std::equal_to<>> counts; // found by any kind of text
///
/// Released strings go to a pool of `kPoolCapacity` objects, from which `New` and `NewString` take theirs.
///
/// Ownership: owns its text. Factories give an owned string, or throw `std::bad_alloc` when there is no memory for the
/// object.
/// Threads: one thread at a time per string; pool and factories may be used by any thread.
class VFOUNDATION_API VString : public Registered<VString, VObject> {
  public:
    static constexpr char const* kClassName = "VString";
    static VClass* ms_theClass;

    /// The longest text a string holds, in bytes.
    static constexpr unsigned long kMaxLength = 0xFFFFFF7EUL;
    /// `Format` keeps less than this many bytes of its result.
    static constexpr unsigned long kFormatSize = 2048;
    static constexpr unsigned long kPoolCapacity = 8192;

    /// The empty string, with a capacity of 128.
    VString() : VString(nullptr, nullptr) {}
    /// A copy of `text`; null gives the empty string.
    VString(char const* text) : VString(nullptr, text) {}
    /// As `operator=`; the copy of a string without a buffer has one.
    VString(VString const& other);
    /// Takes text, buffer and capacity; `other` is the empty string then.
    VString(VString&& other) noexcept;
    template <detail::StdText Text>
    VString(Text const& text) : VString(nullptr, static_cast<std::string_view>(text)) {}
    ~VString() override;

    /// An empty string (owned), from the pool when it has one.
    [[nodiscard]] static VString* New();
    /// A copy of `text` (owned); null gives an empty string.
    [[nodiscard]] static VString* NewString(char const* text);
    /// The text up to the first NUL as a new string (owned).
    [[nodiscard]] VString* Copy() const override;
    /// A shared empty string (borrowed). Do not change it.
    static VString* EmptyString();

    VString& operator=(VString const& other);
    /// As the copy; `other` is the empty string then. When memory runs out, `other` keeps its text.
    VString& operator=(VString&& other) noexcept;
    VString& operator=(char const* text);
    template <detail::StdText Text>
    VString& operator=(Text const& text) {
        Assign(static_cast<std::string_view>(text));
        return *this;
    }
    /// The one character; the zero character clears.
    VString& operator=(char character);
    /// A number is no text, nor is an enumerator: append it to the empty string.
    template <class Number>
    requires((std::is_arithmetic_v<Number> || std::is_enum_v<Number>)&&!std::same_as<Number, char>) VString&
    operator=(Number number) = delete;

    /// Takes the first `length` bytes of `text`. Where the text is shorter, the rest is NUL. With the string's own
    /// `CString()`, cuts it to `length` or extends it with NULs, in place; does nothing when `length` is not below the
    /// capacity.
    /// DELIBERATE: the length becomes `length` even when the text is shorter; `Length()` may exceed what `CString()`
    /// shows. Appending that makes the capacity grow turns what stands after the first NUL into NULs.
    void Set(char const* text, unsigned long length);

    void Append(char const* text);
    void Append(VString const& text) { AppendText(text.View()); }
    template <detail::StdText Text>
    void Append(Text const& text) {
        AppendText(static_cast<std::string_view>(text));
    }
    VString& operator<<(char const* text) {
        Append(text);
        return *this;
    }
    template <detail::StdText Text>
    VString& operator<<(Text const& text) {
        Append(text);
        return *this;
    }
    /// Appends one character; the zero character appends nothing.
    VString& operator<<(char character) {
        if (character != '\0') {
            AppendOne(character);
        }
        return *this;
    }
    VString& operator+=(char character) { return *this << character; }
    /// Appends the number in decimal. `bool`, `short` and characters other than `char` append as numbers, too.
    /// DELIBERATE: ten characters at most; a number of eleven ("-2147483648") loses its last digit.
    VString& operator<<(int number);
    // Any other number is appended whole: a float with 6 significant digits, a double with 16, a long double with 18,
    // with "." whatever the locale.
    VString& operator<<(unsigned int number);
    VString& operator<<(long number);
    VString& operator<<(unsigned long number);
    VString& operator<<(long long number);
    VString& operator<<(unsigned long long number);
    VString& operator<<(float number);
    VString& operator<<(double number);
    VString& operator<<(long double number);
    /// Appends the object's description.
    /// DELIBERATE: that of a string, too; `s << t` appends "[VString] ".
    VString& operator<<(VObject const& object);
    /// Sets the string to the formatted text, printf-style, cut to `kFormatSize` - 1 bytes.
    void Format(char const* format, ...) __attribute__((format(printf, 2, 3)));
    /// As `Format`, but keeps the whole text. False, with the string empty, when the C library refuses the format or
    /// memory runs out.
    bool FormatWhole(char const* format, ...) __attribute__((format(printf, 2, 3)));

    unsigned long Length() const noexcept { return m_length; }
    /// The size of the buffer in bytes, terminator included; 0 without a buffer.
    /// DELIBERATE: it grows to the next multiple of 128 for a new text, and to 128 more than the text on appending.
    unsigned long Capacity() const noexcept { return m_capacity; }
    bool IsEmpty() const noexcept { return m_length == 0; }
    /// The text (borrowed until the next change); never null.
    char const* CString() const noexcept { return m_block.Bytes() ? m_block.Bytes() : ""; }
    /// `Length()` bytes from `CString()` on (borrowed until the next change).
    std::string_view View() const noexcept { return {CString(), m_length}; }
    operator std::string_view() const noexcept { return View(); }
    std::string StdString() const { return std::string(View()); }
    /// `count` bytes from `from` on, or as many as there are.
    VString Substring(unsigned long from, unsigned long count = kMaxLength) const;
    /// 0 for an index that is not below the length.
    char GetCharAtIndex(unsigned long index) const noexcept {
        return index < m_length ? m_block.Bytes()[index] : '\0';
    }
    /// The index of the first occurrence, or -1.
    long Find(char character) const noexcept;
    /// The index of the first occurrence of `text` that does not start before `from`, or -1. The empty text is found at
    /// once.
    template <class Text>
    requires(std::is_convertible_v<Text const&, char const*> ||
             std::is_convertible_v<Text const&, std::string_view>) long Find(Text const& text,
                                                                             unsigned long from =
                                                                                 0) const noexcept {
        if constexpr (std::is_convertible_v<Text const&, char const*>) {
            char const* const characters = text;
            return FindText(characters ? characters : "", from);
        } else {
            return FindText(text, from);
        }
    }

    /// Same length and same text.
    virtual bool operator==(VString const& other) const;
    /// False for null.
    bool operator==(char const* text) const;
    bool operator!=(VString const& other) const { return !(*this == other); }
    template <detail::StdText Text>
    bool operator==(Text const& text) const {
        return IsSame(static_cast<std::string_view>(text));
    }
    bool operator!=(char const* text) const { return !(*this == text); }
    friend bool operator==(char const* text, VString const& string) { return string == text; } ///< The same.
    /// Byte order of the texts; null is never greater.
    bool operator<(VString const& other) const;
    bool operator<(char const* text) const;
    /// The same order; null comes first. Texts that are equivalent and differ in length (see `Set`) are not equal.
    std::weak_ordering operator<=>(VString const& other) const noexcept {
        return Compare(other.VisibleText());
    }
    std::weak_ordering operator<=>(char const* text) const noexcept {
        return text ? Compare(text) : std::weak_ordering::greater;
    }
    template <detail::StdText Text>
    std::weak_ordering operator<=>(Text const& text) const {
        return Compare(static_cast<std::string_view>(text));
    }
    /// Same class and same text.
    bool IsEqual(VObject const& other) const override;

    /// Removes the last separator and everything after it, in place; without a separator nothing changes.
    /// DELIBERATE: a backslash anywhere goes before every '/'; "C:\dir/file" becomes "C:".
    void DeleteLastPathComponent();
    /// Appends `component`, after a '/' unless the string is empty or either side has a separator ('/' or backslash)
    /// there. Nothing is collapsed: an empty component leaves a trailing '/'.
    void AppendPathComponent(char const* component);

    /// "[<class name>] ".
    void GetDescription(VString& out) const override;
    /// The text as the file's string; its limits on length apply. False when memory ran out.
    bool Serialize(IAIFile& file) override;
    /// Up to 10 characters stand in the attribute "string", more in the element's text. Reads either; without
    /// both the string is empty. False when it could not be written, or memory ran out.
    bool SerializeAsXML(VXMLFile& file) override;

    /// The last one puts the string into the pool if there is room. Strings of derived classes are never pooled.
    void Release() const override;

    static void InitializeClass();
    static void UninitializeClass();
    static long GetRecycledStringsCount();
    static void ReleaseAllRecycledStrings();

    /// The C library's; returns the destination. Null text counts as empty.
    static char* strncpy(char* destination, char const* source, unsigned long size);
    /// A copy, owned by the caller (array delete). Null for null, and when memory runs out.
    [[nodiscard]] static char* strdup(char const* text);
    /// Compares ignoring case, by the C library's rules. Null sorts first.
    static int stricmp(char const* a, char const* b);
    /// Formats at most `size` - 1 bytes and a terminator into `buffer`; writes nothing when `size` is 0. True.
    /// DELIBERATE: also writes a terminator into the last byte of `buffer`; what stood there is lost.
    static bool snprintf(char* buffer, unsigned long size, char const* format, ...)
        __attribute__((format(printf, 3, 4)));
    /// True when `extension` (given without the dot) is the text after the last '.' of the last component.
    static bool CStringHasPathExtension(char const* path, char const* extension, bool caseInsensitive);

    /// Switches the pool; cleared when the library shuts down. Relaxed: the pool guards itself.
    static std::atomic<bool> ms_bRecyclingEnabled;
    static std::atomic<VObjectRingBufferTmpl<VString>*> ms_recycledStrings;
    static std::atomic<VString*> ms_emptyString;

  protected:
    /// For derived classes, with their record or null.
    VString(VClass* cls, char const* text);
    VString(VClass* cls, std::string_view text);

  private:
    friend struct std::hash<VString>;

    /// What the first buffer reports, and has.
    static constexpr std::size_t kFirstCapacity = 128;

    static std::string_view UpToNul(std::string_view text) noexcept {
        return text.substr(0, text.find('\0'));
    }
    /// The text up to its first NUL.
    std::string_view VisibleText() const noexcept { return m_mayHoldNul ? UpToNul(View()) : View(); }
    bool IsSame(std::string_view text) const noexcept;
    std::weak_ordering Compare(std::string_view text) const noexcept {
        return VisibleText() <=> UpToNul(text);
    }
    long FindText(std::string_view text, unsigned long from) const noexcept;

    void Begin(char const* text, unsigned long length) noexcept;
    bool Allocate(unsigned long size, bool keepBytes = false) noexcept;
    bool Reallocate(unsigned long size) noexcept;
    void Assign(char const* text, unsigned long length, bool mayHoldNul = false) noexcept;
    void Assign(std::string_view text) noexcept;
    void AppendText(std::string_view text) noexcept;
    bool AppendBytes(char const* text, unsigned long count) noexcept;
    bool AppendOne(char character) noexcept {
        unsigned long const length = m_length + 1UL;
        if (length >= m_capacity) {
            return AppendBytes(&character, 1);
        }
        char* const end = m_block.Bytes() + length;
        end[-1] = character;
        *end = '\0';
        m_length = static_cast<std::uint32_t>(length);
        return true;
    }
    bool Owns(char const* text) const noexcept;
    void Cut(unsigned long length) noexcept;
    void Take(VString& other, unsigned long capacity) noexcept;
    void DropBuffer() noexcept;

    std::uint32_t m_length = 0;
    std::uint32_t m_capacity = 0;
    mutable bool m_inPool = false;
    bool m_mayHoldNul = false;      // false: the length is the position of the first NUL
    char* m_secondBuffer = nullptr; // array new, freed with the first; no operation fills it
    InlineBlock<kFirstCapacity> m_block;
};

/// Writes the text up to its first NUL.
VFOUNDATION_API std::ostream& operator<<(std::ostream& stream, VString const& text);

/// A size as another type. Nothing is checked: high bits that do not fit are dropped.
inline unsigned short sizet2ushort(unsigned long size) {
    return narrow_cast<unsigned short>(size);
}
inline long sizet2long(unsigned long size) {
    return narrow_cast<long>(size);
}
inline unsigned long sizet2ulong(unsigned long size) {
    return size;
}

} // namespace VFoundation

/// Equal texts have equal hashes, whatever their kind. Transparent, so that a container finds a `VString` by a
/// `std::string_view` or a C string.
template <>
struct std::hash<VFoundation::VString> {
    using is_transparent = void;

    std::size_t operator()(VFoundation::VString const& text) const noexcept {
        return std::hash<std::string_view>{}(text.VisibleText());
    }
    template <VFoundation::detail::StdText Text>
    std::size_t operator()(Text const& text) const noexcept {
        return std::hash<std::string_view>{}(VFoundation::VString::UpToNul(text));
    }
    std::size_t operator()(char const* text) const noexcept {
        return std::hash<std::string_view>{}(text ? text : "");
    }
};
