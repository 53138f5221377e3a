#pragma once

#include "foundation/core/Export.h"

#include <cstddef>
#include <utility>

namespace VFoundation {

/// The memory of byte buffers and long strings. Installed because `VData` and `VString` hold one by value; use those.
///
/// A block grows geometrically and moves by `realloc`, whatever capacity its owner reports: appending in small steps
/// costs a constant amount per byte.
///
/// Never throws: when an allocation fails, the result is false and the block stays as it was. Bytes are 16-byte
/// aligned and not cleared.
///
/// Ownership: owns its memory.
/// Threads: one thread at a time.
class VFOUNDATION_API HeapBlock {
  public:
    static constexpr std::size_t kAlignment = 16;

    HeapBlock() noexcept = default;
    HeapBlock(HeapBlock const&) = delete;
    HeapBlock& operator=(HeapBlock const&) = delete;
    ~HeapBlock() { Free(); }

    /// Null when the block is empty.
    char* Bytes() const noexcept { return m_bytes; }
    /// Usable bytes, at least as many as were last asked for.
    std::size_t Size() const noexcept { return m_size; }

    /// Makes room for at least `needed` bytes and keeps the contents.
    bool Grow(std::size_t needed) noexcept { return needed <= m_size || GrowBlock(needed); }
    /// Makes room for exactly `needed` bytes (more than 0); the old contents are lost.
    bool Replace(std::size_t needed) noexcept;
    /// Shrinks the block to `needed` bytes (more than 0) if that frees at least half of it.
    void Trim(std::size_t needed) noexcept;
    void Free() noexcept {
        if (m_bytes) {
            FreeBlock();
        }
    }
    void Swap(HeapBlock& other) noexcept {
        std::swap(m_bytes, other.m_bytes);
        std::swap(m_size, other.m_size);
    }

  private:
    bool GrowBlock(std::size_t needed) noexcept;
    void FreeBlock() noexcept;

    char* m_bytes = nullptr;
    std::size_t m_size = 0;
};

} // namespace VFoundation
