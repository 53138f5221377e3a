#include "foundation/core/internal/ClassNameIndex.h"

#include "foundation/core/VClass.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

namespace VFoundation {

namespace {

/// Eight bytes at a time; the last of them may be fewer.
std::size_t HashOf(std::string_view name) noexcept {
    constexpr std::uint64_t kOdd = 0x9e3779b97f4a7c15U;
    std::uint64_t hash = name.size() * kOdd;
    for (std::size_t at = 0; at < name.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, name.data() + at, std::min(sizeof word, name.size() - at));
        hash = (hash ^ word) * kOdd;
        hash ^= hash >> 29;
    }
    return hash;
}

} // namespace

ClassNameIndex::ClassNameIndex(std::size_t count)
    : m_mask(std::bit_ceil(count * 2 + 2) - 1), m_entries(std::make_unique<Entry[]>(m_mask + 1)) {
}

void ClassNameIndex::Insert(VClass* record) {
    std::string_view const name = record->Name();
    std::size_t const hash = HashOf(name);
    std::size_t slot = hash & m_mask;
    while (m_entries[slot].record) {
        slot = (slot + 1) & m_mask;
    }
    m_entries[slot] = {hash, name, record};
}

VClass* ClassNameIndex::Find(char const* name) const noexcept {
    std::string_view const text = name;
    std::size_t const hash = HashOf(text);
    for (std::size_t slot = hash & m_mask; m_entries[slot].record; slot = (slot + 1) & m_mask) {
        if (m_entries[slot].hash == hash && m_entries[slot].name == text) {
            return m_entries[slot].record;
        }
    }
    return nullptr;
}

} // namespace VFoundation
