#include "foundation/strings/VData.h"

#include "foundation/core/VException.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/strings/VString.h"

#include <cstring>
#include <utility>

namespace VFoundation {

VClass* VData::ms_theClass = nullptr;

VData::VData(VClass* cls, unsigned long length) : Registered(cls) {
    if (length) {
        SetLength(length, true);
        FastZeroMemory(Bytes(), length);
    }
}

VData::VData(VData const& other) : Registered(nullptr) {
    *this = other;
}

// Making the record could throw; it is there, as `other` is.
VData::VData(VData&& other) noexcept : Registered(LoadClassSlot(ms_theClass)) {
    Swap(other);
}

VData::~VData() = default;

VData* VData::New() {
    return new VData;
}

VData* VData::Copy() const {
    return new VData(*this);
}

VData& VData::operator=(VData const& other) {
    if (this != &other) {
        SetLength(other.m_length, false);
        if (m_length) {
            std::memcpy(Bytes(), other.Bytes(), m_length);
        }
    }
    return *this;
}

VData& VData::operator=(VData&& other) noexcept {
    if (this != &other) {
        m_block.Free();
        m_length = 0;
        Swap(other);
    }
    return *this;
}

bool VData::SetLength(unsigned long length, bool keepContents) {
    if (length == m_length) {
        return true;
    }
    if (length == 0) {
        m_block.Free();
    } else if (length > kMaxLength ||
               !(keepContents || length <= m_block.Size() ? m_block.Grow(length) : m_block.Replace(length))) {
        throw VException(VException::eOutOfMemory, this, "Error setting VData length", -1);
    } else {
        m_block.Trim(length);
    }
    m_length = narrow_cast<std::uint32_t>(length);
    m_owned = true;
    return true;
}

void VData::Swap(VData& other) noexcept {
    m_block.Swap(other.m_block);
    std::swap(m_length, other.m_length);
    std::swap(m_owned, other.m_owned);
}

bool VData::operator==(VData const& other) const noexcept {
    return m_length == other.m_length &&
           (Bytes() == other.Bytes() || std::memcmp(Bytes(), other.Bytes(), m_length) == 0);
}

bool VData::IsEqual(VObject const& other) const {
    return other.Class() == Class() && *this == static_cast<VData const&>(other);
}

void VData::GetDescription(VString& out) const {
    out.Format("[%s] Length: %li  Ptr: 0x%08lX  Owned: %s", ClassName(), long{m_length},
               reinterpret_cast<unsigned long>(Bytes()), m_owned ? "yes" : "no");
}

bool VData::Serialize(IAIFile& file) {
    if (!file.IsLoading()) {
        file << static_cast<long long>(m_length);
        return file.Write(Bytes(), m_length);
    }
    unsigned long long saved = 0;
    file >> saved;
    unsigned long const length = saved & kMaxLength;
    if (!file.AcceptLength(length)) {
        throw VException(VException::eOutOfMemory, this, "Error setting VData length", -1);
    }
    SetLength(length, false);
    if (!file.IsChunkSafe()) {
        FastZeroMemory(Bytes(), length); // a chunk-safe read clears what it cannot fill
    }
    return file.Read(Bytes(), length);
}

bool VData::Serialize_YeOldeZephStyle(IAIFile& file) {
    return file.IsLoading() ? file.Read(Bytes(), m_length) : file.Write(Bytes(), m_length);
}

bool VData::FastZeroMemory(unsigned char* bytes, unsigned long count) {
    if (!bytes || count == 0) {
        return false;
    }
    std::memset(bytes, 0, count);
    return true;
}

} // namespace VFoundation
