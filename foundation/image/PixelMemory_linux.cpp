#include "foundation/image/PixelMemory.h"

#include <cstdlib>
#include <sys/mman.h>

namespace VFoundation {

namespace {

constexpr std::size_t kLargePage = 2UL << 20;

} // namespace

void* AllocatePixelMemory(std::size_t bytes) noexcept {
    if (bytes == 0) {
        return nullptr;
    }
    if (bytes < 2 * kLargePage) {
        return std::malloc(bytes);
    }
    std::size_t const rounded = (bytes + kLargePage - 1) / kLargePage * kLargePage;
    void* const block = rounded < bytes ? nullptr : std::aligned_alloc(kLargePage, rounded);
    if (block) {
        // Only a wish: without large pages the memory is as good.
        ::madvise(block, rounded, MADV_HUGEPAGE);
    }
    return block;
}

void FreePixelMemory(void* block) noexcept {
    std::free(block);
}

} // namespace VFoundation
