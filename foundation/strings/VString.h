#pragma once

#include "foundation/core/Registered.h"
#include "foundation/strings/HeapBlock.h"

#include <atomic>
#include <cstdint>

namespace VFoundation {

template <class T>
class VObjectRingBufferTmpl;

/// The library's string: owned, NUL-terminated 8-bit text with a length and a capacity, also used for paths.
/// Bytes have no encoding: comparison is byte-wise.
///
///     VString path("/opt/app");
///     path.AppendPathComponent("icons");      // "/opt/app/icons"
///     path << '/' << 42;                      // numbers and characters append too
///
/// Text given to an operation may be a part of the string itself. Null text is empty text, also as a format. When
/// memory runs out, the string is left without a buffer (length and capacity 0) and stays usable. Text that would
/// make it longer than `kMaxLength` is refused and leaves the string as it was. The length is the position of the
/// first NUL, except after `Set`.
///
/// To append the text of a string `t`, append `t.CString()`. There is no conversion to `char const*`.
///
/// Released strings go to a pool of `kPoolCapacity` objects, from which `New` and `NewString` take theirs.
///
/// Ownership: owns its text. Factories give an owned string, or throw `std::bad_alloc` when there is no memory for the
/// object.
/// Threads: one thread at a time per string; pool and factories may be used by any thread.
class VString : public Registered<VString, VObject> {
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
    ~VString() override;

    /// An empty string (owned), from the pool when it has one.
    static VString* New();
    /// A copy of `text` (owned); null gives an empty string.
    static VString* NewString(char const* text);
    /// The text up to the first NUL as a new string (owned).
    VString* Copy() const override;
    /// A shared empty string (borrowed). Do not change it.
    static VString* EmptyString();

    VString& operator=(VString const& other);
    VString& operator=(char const* text);
    /// The one character; the zero character clears.
    VString& operator=(char character);

    /// Takes the first `length` bytes of `text`. Where the text is shorter, the rest is NUL. With the string's own
    /// `CString()`, cuts it to `length` or extends it with NULs, in place; does nothing when `length` is not below the
    /// capacity.
    /// DELIBERATE: the length becomes `length` even when the text is shorter; `Length()` may exceed what `CString()`
    /// shows. Appending that makes the capacity grow turns what stands after the first NUL into NULs.
    void Set(char const* text, unsigned long length);

    void Append(char const* text);
    VString& operator<<(char const* text);
    /// Appends one character; the zero character appends nothing.
    VString& operator<<(char character);
    VString& operator+=(char character) { return *this << character; }
    /// Appends the number in decimal.
    /// DELIBERATE: ten characters at most; a number of eleven ("-2147483648") loses its last digit.
    VString& operator<<(int number);
    /// Appends the object's description.
    /// DELIBERATE: that of a string, too; `s << t` appends "[VString] ".
    VString& operator<<(VObject const& object);
    /// Sets the string to the formatted text, printf-style, cut to `kFormatSize` - 1 bytes.
    void Format(char const* format, ...) __attribute__((format(printf, 2, 3)));

    unsigned long Length() const noexcept { return m_length; }
    /// The size of the buffer in bytes, terminator included; 0 without a buffer.
    /// DELIBERATE: it grows to the next multiple of 128 for a new text, and to 128 more than the text on appending.
    unsigned long Capacity() const noexcept { return m_capacity; }
    bool IsEmpty() const noexcept { return m_length == 0; }
    /// The text (borrowed until the next change); never null.
    char const* CString() const noexcept { return m_block.Bytes() ? m_block.Bytes() : ""; }
    /// 0 for an index that is not below the length.
    char GetCharAtIndex(unsigned long index) const noexcept {
        return index < m_length ? m_block.Bytes()[index] : '\0';
    }
    /// The index of the first occurrence, or -1.
    long Find(char character) const noexcept;

    /// Same length and same text.
    virtual bool operator==(VString const& other) const;
    /// False for null.
    bool operator==(char const* text) const;
    bool operator!=(VString const& other) const { return !(*this == other); }
    bool operator!=(char const* text) const { return !(*this == text); }
    /// Byte order of the texts; null is never greater.
    bool operator<(VString const& other) const;
    bool operator<(char const* text) const;
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
    static char* strdup(char const* text);
    /// Compares ignoring case, by the C library's rules. Null sorts first.
    static int stricmp(char const* a, char const* b);
    /// Formats at most `size` - 1 bytes and a terminator into `buffer`; writes nothing when `size` is 0. True.
    /// DELIBERATE: also writes a terminator into the last byte of `buffer`; what stood there is lost.
    static bool snprintf(char* buffer, unsigned long size, char const* format, ...)
        __attribute__((format(printf, 3, 4)));
    /// True when `extension` (given without the dot) is the text after the last '.' of the last component.
    static bool CStringHasPathExtension(char const* path, char const* extension, bool caseInsensitive);

    /// Switches the pool; cleared when the library shuts down.
    static std::atomic<bool> ms_bRecyclingEnabled;
    static std::atomic<VObjectRingBufferTmpl<VString>*> ms_recycledStrings;
    static std::atomic<VString*> ms_emptyString;

  protected:
    /// For derived classes, with their record or null.
    VString(VClass* cls, char const* text);

  private:
    bool Allocate(unsigned long size, bool keepBytes = false) noexcept;
    bool Reallocate(unsigned long size) noexcept;
    void Assign(char const* text, unsigned long length, bool mayHoldNul = false) noexcept;
    bool AppendBytes(char const* text, unsigned long count) noexcept;
    bool AppendOne(char character) noexcept;
    bool Owns(char const* text) const noexcept;
    void Cut(unsigned long length) noexcept;
    void DropBuffer() noexcept;

    HeapBlock m_block;
    std::uint32_t m_length = 0;
    std::uint32_t m_capacity = 0;
    mutable bool m_inPool = false;
    bool m_mayHoldNul = false;      // false: the length is the position of the first NUL
    char* m_secondBuffer = nullptr; // array new, freed with the first; no operation fills it
};

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
