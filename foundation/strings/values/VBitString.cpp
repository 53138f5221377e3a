#include "foundation/strings/values/VBitString.h"

#include "foundation/core/internal/CopyByAssignment.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <utility>

namespace VFoundation {

namespace {

constexpr std::int32_t kBitsPerByte = 8;

unsigned long BytesFor(std::int32_t count) {
    return (static_cast<unsigned long>(count) + kBitsPerByte - 1) / kBitsPerByte;
}

unsigned char MaskOf(std::int32_t index) {
    return narrow_cast<unsigned char>(1 << (index % kBitsPerByte));
}

} // namespace

VClass* VBitString::ms_theClass = nullptr;

VBitString::VBitString(VClass* cls, std::int32_t count) : Registered(cls) {
    SetCount(count);
}

VBitString::VBitString(VBitString const& other)
    : Registered(nullptr), m_count(other.m_count), m_bytes(other.m_bytes) {
}

// Making the record could throw; it is there, as `other` is.
VBitString::VBitString(VBitString&& other) noexcept
    : Registered(LoadClassSlot(ms_theClass)), m_count(std::exchange(other.m_count, 0)),
      m_bytes(std::move(other.m_bytes)) {
}

VBitString& VBitString::operator=(VBitString&& other) noexcept {
    if (this != &other) {
        m_count = std::exchange(other.m_count, 0);
        m_bytes = std::move(other.m_bytes);
    }
    return *this;
}

VBitString& VBitString::operator=(VBitString const& other) {
    m_bytes = other.m_bytes; // the count stays right when this throws
    m_count = other.m_count;
    return *this;
}

void VBitString::SetCount(std::int32_t count) {
    std::int32_t const wanted = std::max(count, 0);
    unsigned long const old = m_bytes.Length();
    m_bytes.SetLength(BytesFor(wanted), true);
    if (m_bytes.Length() > old) {
        std::memset(m_bytes.Bytes() + old, 0, m_bytes.Length() - old);
    }
    m_count = wanted;
    ClearUnusedBits();
}

void VBitString::ClearUnusedBits() noexcept {
    if (m_count % kBitsPerByte) {
        m_bytes.Bytes()[m_bytes.Length() - 1] &= narrow_cast<unsigned char>(MaskOf(m_count) - 1);
    }
}

bool VBitString::GetBit(std::int32_t index) const noexcept {
    return Has(index) && (m_bytes.Bytes()[index / kBitsPerByte] & MaskOf(index)) != 0;
}

bool VBitString::SetBit(std::int32_t index, bool value) noexcept {
    return Has(index) && (GetBit(index) == value || FlipBit(index));
}

bool VBitString::FlipBit(std::int32_t index) noexcept {
    if (!Has(index)) {
        return false;
    }
    m_bytes.Bytes()[index / kBitsPerByte] ^= MaskOf(index);
    return true;
}

std::int32_t VBitString::CountOnes() const noexcept {
    std::int32_t ones = 0;
    unsigned long i = 0;
    for (std::uint64_t word = 0; m_bytes.Length() - i >= sizeof word; i += sizeof word) {
        std::memcpy(&word, m_bytes.Bytes() + i, sizeof word);
        ones += std::popcount(word);
    }
    for (; i < m_bytes.Length(); ++i) {
        ones += std::popcount(m_bytes.Bytes()[i]);
    }
    return ones;
}

template <class Operation>
void VBitString::Combine(VBitString const& other, Operation operation) noexcept {
    for (unsigned long i = 0; i < m_bytes.Length(); ++i) {
        int const theirs = i < other.m_bytes.Length() ? other.m_bytes.Bytes()[i] : 0;
        m_bytes.Bytes()[i] = narrow_cast<unsigned char>(operation(m_bytes.Bytes()[i], theirs));
    }
    ClearUnusedBits();
}

void VBitString::And(VBitString const& other) noexcept {
    Combine(other, [](int a, int b) { return a & b; });
}

void VBitString::Or(VBitString const& other) noexcept {
    Combine(other, [](int a, int b) { return a | b; });
}

void VBitString::Xor(VBitString const& other) noexcept {
    Combine(other, [](int a, int b) { return a ^ b; });
}

VString VBitString::AsString() const {
    VData text(static_cast<unsigned long>(m_count) + 1);
    for (std::int32_t i = 0; i < m_count; ++i) {
        text.Bytes()[i] = GetBit(i) ? '1' : '0';
    }
    return VString(reinterpret_cast<char const*>(text.Bytes()));
}

bool VBitString::SetFromString(char const* text) {
    std::size_t const length = text ? std::strlen(text) : 0;
    if (!text || text[std::strspn(text, "01")] != '\0' ||
        length > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max())) {
        return false;
    }
    SetCount(narrow_cast<std::int32_t>(length));
    for (std::int32_t i = 0; i < m_count; ++i) {
        SetBit(i, text[i] == '1');
    }
    return true;
}

bool VBitString::operator==(VBitString const& other) const noexcept {
    return m_count == other.m_count && m_bytes == other.m_bytes;
}

bool VBitString::IsEqual(VObject const& other) const {
    return other.Class() == Class() && *this == static_cast<VBitString const&>(other);
}

VObject* VBitString::Copy() const {
    return detail::CopyByAssignment(*this);
}

void VBitString::GetDescription(VString& out) const {
    out.Format("[%s] %s", ClassName(), AsString().CString());
}

bool VBitString::Serialize(IAIFile& file) {
    if (!file.IsLoading()) {
        file << m_count;
        return file.Write(m_bytes.Bytes(), m_bytes.Length());
    }
    std::int32_t count = 0;
    file >> count;
    unsigned long const inFile = file.GetFileRemaining();
    unsigned long const left = file.IsChunkSafe() ? std::min(inFile, file.ChunkRemaining()) : inFile;
    bool const isThere = count >= 0 && BytesFor(count) <= left;
    VBitString loaded(isThere ? count : 0);
    bool const isWhole = isThere && file.Read(loaded.m_bytes.Bytes(), loaded.m_bytes.Length());
    loaded.SetCount(isWhole ? count : 0); // clears the bits after the last
    m_bytes.Swap(loaded.m_bytes);
    m_count = loaded.m_count;
    return isWhole;
}

bool VBitString::SerializeAsXML(VXMLFile& file) {
    constexpr char const* kBitsKey = "bits";
    if (!VObject::SerializeAsXML(file)) {
        VString const text = AsString();
        return text.Length() == static_cast<unsigned long>(m_count) &&
               file.WriteAttribute(kBitsKey, text.CString());
    }
    char const* text = nullptr; // as it is, so that an empty one counts
    return file.ReadAttribute(kBitsKey, text) && SetFromString(text);
}

} // namespace VFoundation
