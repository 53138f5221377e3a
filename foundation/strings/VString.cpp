#include "foundation/strings/VString.h"

#include "foundation/containers/internal/TRecyclePool.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/host/VFileManager.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/strings/internal/FormatText.h"
#include "foundation/strings/internal/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <ostream>
#include <strings.h>
#include <typeinfo>

namespace VFoundation {

namespace {

constexpr unsigned long kAllocateStep = 128;
constexpr unsigned long kReallocateRoom = 127;
constexpr long kIntCharacters = 10;

unsigned long CapacityFor(unsigned long size) {
    return size - size % kAllocateStep + kAllocateStep;
}

bool IsSeparator(char character) {
    return character == '/' || character == '\\';
}

/// Formats at most `size` - 1 bytes. A null format, and one that the C library refuses, gives the empty text.
[[gnu::format(printf, 3, 0)]] void FormatCut(char* buffer, unsigned long size, char const* format,
                                             std::va_list arguments) {
    if (!format || FormatText(buffer, size, format, arguments) < 0) {
        buffer[0] = '\0';
    }
}

} // namespace

VClass* VString::ms_theClass = nullptr;
std::atomic<bool> VString::ms_bRecyclingEnabled{true};
std::atomic<VObjectRingBufferTmpl<VString>*> VString::ms_recycledStrings{nullptr};
std::atomic<VString*> VString::ms_emptyString{nullptr};

/// The text of a string that is being made. A short one needs none of the questions that a change asks; `text` may be
/// null where `length` is 0.
inline void VString::Begin(char const* text, unsigned long length) noexcept {
    if (CapacityFor(length + 1) != kFirstCapacity) {
        Assign(text, length);
        return;
    }
    m_block.Replace(kFirstCapacity);
    if (length > 0) {
        std::memcpy(m_block.Bytes(), text, length);
    }
    m_block.Bytes()[length] = '\0';
    m_capacity = kFirstCapacity;
    m_length = narrow_cast<std::uint32_t>(length);
}

VString::VString(VClass* cls, char const* text) : Registered(cls) {
    Begin(text, text ? std::strlen(text) : 0);
}

VString::VString(VClass* cls, std::string_view text) : Registered(cls) {
    text = UpToNul(text);
    Begin(text.data(), text.size());
}

VString::VString(VString const& other) : Registered(nullptr) {
    Assign(other.CString(), other.m_length, other.m_mayHoldNul);
}

// Making the record could throw; it is there, as `other` is.
VString::VString(VString&& other) noexcept : Registered(LoadClassSlot(ms_theClass)) {
    Begin(nullptr, 0);
    if (other.m_block.IsInline() || !other.m_block.Bytes()) {
        *this = std::move(other);
    } else {
        Take(other, other.m_capacity);
    }
}

VString::~VString() {
    delete[] m_secondBuffer;
}

VString* VString::New() {
    return NewString(nullptr);
}

VString* VString::NewString(char const* text) {
    VString* string = nullptr;
    if (ms_bRecyclingEnabled.load(std::memory_order_relaxed)) {
        string = TRecyclePool<VString>::Pop(ms_recycledStrings, &VString::m_inPool);
    }
    if (!string) {
        string = new VString;
    }
    text = text ? text : "";
    string->Assign(text, std::strlen(text)); // a pooled string still has its old text
    return string;
}

VString* VString::Copy() const {
    return NewString(CString());
}

VString* VString::EmptyString() {
    return detail::MakeOnce(ms_emptyString, [] { return new VString; });
}

// The buffer

/// Makes room for a new text of less than `size` bytes and forgets the old one. `keepBytes` is for a new text that
/// stands in the buffer already.
bool VString::Allocate(unsigned long size, bool keepBytes) noexcept {
    unsigned long const capacity = CapacityFor(size);
    delete[] m_secondBuffer;
    m_secondBuffer = nullptr;
    bool const allocated =
        capacity <= m_block.Size() || (keepBytes ? m_block.Grow(capacity) : m_block.Replace(capacity));
    if (!allocated) {
        DropBuffer();
        return false;
    }
    m_capacity = narrow_cast<std::uint32_t>(capacity);
    m_length = 0;
    return true;
}

/// Makes room for `size` bytes, the text that is there included.
/// The reported capacity is the request and 127 bytes more, not a multiple of 128 as for a new text.
bool VString::Reallocate(unsigned long size) noexcept {
    if (!m_block.Bytes()) {
        return Allocate(size);
    }
    if (!m_block.Grow(size + kReallocateRoom)) {
        DropBuffer();
        return false;
    }
    m_capacity = narrow_cast<std::uint32_t>(size + kReallocateRoom);
    return true;
}

void VString::DropBuffer() noexcept {
    m_block.Free();
    m_length = 0;
    m_capacity = 0;
}

void VString::Cut(unsigned long length) noexcept {
    if (m_block.Bytes()) {
        m_block.Bytes()[length] = '\0';
        m_length = narrow_cast<std::uint32_t>(length);
    }
}

bool VString::Owns(char const* text) const noexcept {
    std::less<char const*> const before;
    char const* const bytes = m_block.Bytes();
    return bytes && !before(text, bytes) && before(text, bytes + m_block.Size());
}

void VString::Assign(char const* text, unsigned long length, bool mayHoldNul) noexcept {
    if (length > kMaxLength || (length >= m_capacity && !Allocate(length + 1))) {
        return;
    }
    std::memmove(m_block.Bytes(), text, length); // the text may be a part of this one
    m_mayHoldNul = mayHoldNul;
    Cut(length);
}

void VString::Assign(std::string_view text) noexcept {
    text = UpToNul(text);
    Assign(text.empty() ? "" : text.data(), text.size());
}

/// Takes text and heap memory of `other`, which becomes the empty string.
void VString::Take(VString& other, unsigned long capacity) noexcept {
    m_block.TakeHeap(other.m_block);
    m_length = std::exchange(other.m_length, 0);
    m_mayHoldNul = std::exchange(other.m_mayHoldNul, false);
    m_capacity = narrow_cast<std::uint32_t>(capacity);
    other.m_capacity = 0;
    other.Assign("", 0);
}

bool VString::AppendBytes(char const* text, unsigned long count) noexcept {
    unsigned long const total = m_length + count;
    if (total > kMaxLength) {
        return false;
    }
    bool const grows = total >= m_capacity;
    if (grows) {
        bool const isOwn = Owns(text);
        auto const offset = isOwn ? text - m_block.Bytes() : 0;
        if (!Reallocate(total + 1)) {
            return false;
        }
        text = isOwn ? m_block.Bytes() + offset : text;
    }
    std::memmove(m_block.Bytes() + m_length, text, count);
    if (grows && m_mayHoldNul) {
        unsigned long const visible = ::strnlen(m_block.Bytes(), m_length);
        std::memset(m_block.Bytes() + visible, 0, m_length - visible);
    }
    Cut(total);
    return true;
}

// Assignment

VString& VString::operator=(VString const& other) {
    if (this != &other) {
        if (other.m_block.Bytes()) {
            Assign(other.m_block.Bytes(), other.m_length, other.m_mayHoldNul);
        } else {
            Cut(0);
        }
    }
    return *this;
}

VString& VString::operator=(VString&& other) noexcept {
    if (this == &other) {
        return *this;
    }
    bool const isLonger = other.m_length >= m_capacity;
    bool const isWorthTaking = isLonger || other.m_block.Size() >= m_capacity;
    if (other.m_block.Bytes() && !other.m_block.IsInline() && isWorthTaking) {
        // The capacity is that which a copy would have, if there is memory for it.
        unsigned long const capacity = isLonger ? CapacityFor(other.m_length + 1UL) : m_capacity;
        Take(other, other.m_block.Grow(capacity) ? capacity : other.m_capacity);
        return *this;
    }
    *this = static_cast<VString const&>(other);
    if (m_block.Bytes()) {
        other.Cut(0);
    }
    return *this;
}

VString& VString::operator=(char const* text) {
    if (!text) {
        Cut(0);
    } else if (text != m_block.Bytes()) {
        Assign(text, std::strlen(text));
    }
    return *this;
}

VString& VString::operator=(char character) {
    if (character == '\0') {
        Cut(0);
    } else {
        Assign(&character, 1);
    }
    return *this;
}

void VString::Set(char const* text, unsigned long length) {
    if (!text) {
        Cut(0);
        return;
    }
    if (text == m_block.Bytes()) {
        if (length < m_capacity) {
            if (length > m_length) {
                std::memset(m_block.Bytes() + m_length, 0, length - m_length);
                m_mayHoldNul = true;
            }
            Cut(length);
        }
        return;
    }
    if (length > kMaxLength) {
        return;
    }
    unsigned long const visible = ::strnlen(text, length);
    if (Owns(text)) {
        std::memmove(m_block.Bytes(), text, visible);
        text = nullptr;
    }
    if (m_capacity <= length && !Allocate(length + 1, text == nullptr)) {
        return;
    }
    if (text) {
        std::memcpy(m_block.Bytes(), text, visible);
    }
    std::memset(m_block.Bytes() + visible, 0, length - visible);
    m_mayHoldNul = visible < length;
    Cut(length);
}

void VString::Format(char const* format, ...) {
    char text[kFormatSize];
    std::va_list arguments;
    va_start(arguments, format);
    FormatCut(text, sizeof text, format, arguments);
    va_end(arguments);
    *this = text;
}

bool VString::FormatWhole(char const* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    int const length = format ? std::vsnprintf(nullptr, 0, format, arguments) : -1;
    VString text; // not this string, which may be an argument
    bool const isWhole = length >= 0 && text.Reallocate(static_cast<unsigned long>(length) + 1);
    if (isWhole) {
        FormatCut(text.m_block.Bytes(), static_cast<unsigned long>(length) + 1, format, again);
        text.Cut(std::strlen(text.m_block.Bytes()));
    }
    va_end(again);
    va_end(arguments);
    *this = std::move(text);
    return isWhole;
}

// Appending

void VString::Append(char const* text) {
    if (text) {
        AppendBytes(text, std::strlen(text));
    }
}

void VString::AppendText(std::string_view text) noexcept {
    text = UpToNul(text);
    if (!text.empty()) {
        AppendBytes(text.data(), text.size());
    }
}

VString& VString::operator<<(int number) {
    char digits[12];
    char const* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    AppendBytes(digits, static_cast<unsigned long>(std::min<long>(end - digits, kIntCharacters)));
    return *this;
}

VString& VString::operator<<(unsigned int number) {
    return *this << static_cast<unsigned long long>(number);
}

VString& VString::operator<<(long number) {
    return *this << static_cast<long long>(number);
}

VString& VString::operator<<(unsigned long number) {
    return *this << static_cast<unsigned long long>(number);
}

VString& VString::operator<<(long long number) {
    return *this << NumberText(number).CString();
}

VString& VString::operator<<(unsigned long long number) {
    return *this << NumberText(number).CString();
}

VString& VString::operator<<(float number) {
    return *this << NumberText(number).CString();
}

VString& VString::operator<<(double number) {
    return *this << NumberText(number).CString();
}

VString& VString::operator<<(long double number) {
    return *this << NumberText(number).CString();
}

VString& VString::operator<<(VObject const& object) {
    auto const description = VObjectRef<VString>::Adopt(NewString(nullptr));
    object.GetDescription(*description);
    return *this << description->CString();
}

// Queries

long VString::Find(char character) const noexcept {
    void const* const found = m_length ? std::memchr(m_block.Bytes(), character, m_length) : nullptr;
    return found ? static_cast<char const*>(found) - m_block.Bytes() : -1;
}

long VString::FindText(std::string_view text, unsigned long from) const noexcept {
    std::size_t const found = View().find(text, from);
    return found == text.npos ? -1 : narrow_cast<long>(found);
}

VString VString::Substring(unsigned long from, unsigned long count) const {
    return from < m_length ? VString(View().substr(from, count)) : VString();
}

bool VString::IsSame(std::string_view text) const noexcept {
    return m_length == text.size() && (text.empty() || std::strncmp(CString(), text.data(), m_length) == 0);
}

bool VString::operator==(VString const& other) const {
    return IsSame(other.View());
}

bool VString::operator==(char const* text) const {
    return text && std::strlen(text) == m_length && std::memcmp(CString(), text, m_length) == 0;
}

bool VString::operator<(VString const& other) const {
    return *this < other.CString();
}

bool VString::operator<(char const* text) const {
    return text && std::strcmp(CString(), text) < 0;
}

bool VString::IsEqual(VObject const& other) const {
    return other.Class() == Class() && *this == static_cast<VString const&>(other);
}

// Paths

void VString::DeleteLastPathComponent() {
    bool const hasBackslash = m_length && std::memchr(m_block.Bytes(), '\\', m_length);
    std::size_t const separator = View().rfind(hasBackslash ? '\\' : '/');
    if (separator != std::string_view::npos) {
        Cut(separator);
    }
}

void VString::AppendPathComponent(char const* component) {
    if (!component) {
        return;
    }
    unsigned long const count = std::strlen(component);
    bool const isJoined = !m_length || IsSeparator(m_block.Bytes()[m_length - 1]) || IsSeparator(*component);
    unsigned long const start = m_length + (isJoined ? 0UL : 1UL);
    if (start + count < m_capacity) {
        char* const bytes = m_block.Bytes();
        std::char_traits<char>::move(bytes + start, component, count); // first: the separator may cover it
        if (!isJoined) {
            bytes[m_length] = VFileManager::HostFileSystemPathComponentSeparator();
        }
        Cut(start + count);
    } else if (Owns(component)) {
        VString const copy(component); // the original moves
        if (copy.m_capacity) {
            AppendPathComponent(copy.CString());
        } else {
            DropBuffer();
        }
    } else if (isJoined || AppendOne(VFileManager::HostFileSystemPathComponentSeparator())) {
        AppendBytes(component, count);
    }
}

// Description, persistence, pool

std::ostream& operator<<(std::ostream& stream, VString const& text) {
    return stream << text.CString();
}

void VString::GetDescription(VString& out) const {
    out.Format("[%s] ", ClassName());
}

bool VString::Serialize(IAIFile& file) {
    if (file.IsLoading()) {
        char* text = nullptr;
        file >> &text;
        std::unique_ptr<char[]> const owned(text);
        *this = text;
        return *this == text; // not when memory ran out
    }
    file << CString();
    return !file.HasLostBytes();
}

void VString::Release() const {
    bool const isLast = RetainCount() == 1;
    if (isLast && !m_inPool && ms_bRecyclingEnabled.load(std::memory_order_relaxed) &&
        typeid(*this) == typeid(VString) &&
        TRecyclePool<VString>::Push(ms_recycledStrings, this, &VString::m_inPool)) {
        return; // another thread may hold the string already
    }
    VObject::Release();
}

void VString::InitializeClass() {
    TRecyclePool<VString>::Create(ms_recycledStrings, kPoolCapacity);
}

void VString::UninitializeClass() {
    TRecyclePool<VString>::Destroy(ms_recycledStrings);
    detail::ReleaseAndClear(ms_emptyString);
}

long VString::GetRecycledStringsCount() {
    return TRecyclePool<VString>::Count(ms_recycledStrings);
}

void VString::ReleaseAllRecycledStrings() {
    TRecyclePool<VString>::Empty(ms_recycledStrings);
}

// C strings

char* VString::strncpy(char* destination, char const* source, unsigned long size) {
    return destination ? std::strncpy(destination, source ? source : "", size) : nullptr;
}

char* VString::strdup(char const* text) {
    if (!text) {
        return nullptr;
    }
    unsigned long const size = std::strlen(text) + 1;
    char* const copy = new (std::nothrow) char[size];
    return copy ? static_cast<char*>(std::memcpy(copy, text, size)) : nullptr;
}

int VString::stricmp(char const* a, char const* b) {
    if (!a || !b) {
        return (a ? 1 : 0) - (b ? 1 : 0);
    }
    return ::strcasecmp(a, b);
}

bool VString::snprintf(char* buffer, unsigned long size, char const* format, ...) {
    if (buffer && size) {
        std::va_list arguments;
        va_start(arguments, format);
        FormatCut(buffer, size, format, arguments);
        va_end(arguments);
        buffer[size - 1] = '\0';
    }
    return true;
}

bool VString::CStringHasPathExtension(char const* path, char const* extension, bool caseInsensitive) {
    char const* const dot = path && extension ? std::strrchr(path, '.') : nullptr;
    if (!dot || dot[1] == '\0') {
        return false;
    }
    char const* const slash = std::strrchr(path, '/');
    if (slash && dot < slash) {
        return false;
    }
    return (caseInsensitive ? ::strcasecmp(dot + 1, extension) : std::strcmp(dot + 1, extension)) == 0;
}

} // namespace VFoundation
