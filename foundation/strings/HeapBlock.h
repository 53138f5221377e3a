#pragma once

#include <cstddef>
#include <utility>

namespace VFoundation {

/// The memory behind strings and byte buffers. Its size runs ahead of what its owner reports: it grows
/// geometrically and moves by `realloc`, so that appending in small steps costs a constant amount per byte
/// whatever steps the owner's reported capacity takes.
///
/// Never throws: an allocation that fails is a false result and leaves the block as it was. Bytes are 16-byte
/// aligned and not cleared. Not for clients; `VString` and `VData` are.
///
/// Ownership: owns its memory.
/// Threads: one thread at a time.
class HeapBlock {
  public:
    static constexpr std::size_t kAlignment = 16;

    HeapBlock() noexcept = default;
    HeapBlock(HeapBlock const&) = delete;
    HeapBlock& operator=(HeapBlock const&) = delete;
    ~HeapBlock() { Free(); }

    /// Null when the block is empty.
    char* Bytes() const noexcept { return m_bytes; }
    /// Bytes that may be used, at least what was last asked for.
    std::size_t Size() const noexcept { return m_size; }

    /// Makes room for `needed` bytes and keeps the contents.
    bool Grow(std::size_t needed) noexcept { return needed <= m_size || GrowBlock(needed); }
    /// Makes room for exactly `needed` bytes (more than 0); the old contents are lost.
    bool Replace(std::size_t needed) noexcept;
    /// Gives memory beyond `needed` bytes (more than 0) back when that is at least half of the block.
    void Trim(std::size_t needed) noexcept;
    void Free() noexcept;

  private:
    bool GrowBlock(std::size_t needed) noexcept;

    char* m_bytes = nullptr;
    std::size_t m_size = 0;
};

} // namespace VFoundation
