#pragma once

#include <cstddef>

namespace VFoundation {

/// Memory for the pixels of one picture, not cleared, aligned for vectors; null for 0 bytes and when there is
/// none. Large blocks ask the system for large pages: at these sizes the page faults of fresh memory cost more
/// than the decoding.
void* AllocatePixelMemory(std::size_t bytes) noexcept;

/// Gives a block back; null is ignored.
void FreePixelMemory(void* block) noexcept;

} // namespace VFoundation
