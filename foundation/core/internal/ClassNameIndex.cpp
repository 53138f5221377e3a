#include "foundation/core/internal/ClassNameIndex.h"

#include "foundation/core/VClass.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace VFoundation {

namespace {

/// FNV-1a, 64 bits.
std::size_t HashOf(char const* name) noexcept {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (; *name; ++name) {
        hash = (hash ^ static_cast<unsigned char>(*name)) * 0x100000001b3U;
    }
    return hash;
}

} // namespace

ClassNameIndex::ClassNameIndex(std::size_t count)
    : m_mask(std::bit_ceil(count * 2 + 2) - 1), m_entries(std::make_unique<Entry[]>(m_mask + 1)) {
}

void ClassNameIndex::Insert(VClass* record) {
    std::size_t const hash = HashOf(record->Name());
    std::size_t slot = hash & m_mask;
    while (m_entries[slot].record) {
        slot = (slot + 1) & m_mask;
    }
    m_entries[slot] = {hash, record};
}

VClass* ClassNameIndex::Find(char const* name) const noexcept {
    std::size_t const hash = HashOf(name);
    for (std::size_t slot = hash & m_mask; m_entries[slot].record; slot = (slot + 1) & m_mask) {
        if (m_entries[slot].hash == hash && std::strcmp(m_entries[slot].record->Name(), name) == 0) {
            return m_entries[slot].record;
        }
    }
    return nullptr;
}

} // namespace VFoundation
