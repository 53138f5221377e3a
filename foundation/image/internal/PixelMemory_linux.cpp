#include "foundation/image/internal/PixelMemory.h"

#include <cstdlib>
#include <sys/mman.h>

namespace VFoundation {

namespace {

constexpr std::size_t kLargePage = 2UL << 20;
constexpr std::size_t kWorthAsking = 2 * kLargePage;

} // namespace

void* AllocatePixelMemory(std::size_t bytes) noexcept {
    if (bytes == 0) {
        return nullptr;
    }
    std::size_t const inLargePages = bytes / kLargePage * kLargePage;
    if (inLargePages < kWorthAsking) {
        return std::malloc(bytes);
    }
    void* block = nullptr;
    if (::posix_memalign(&block, kLargePage, bytes) != 0) {
        return nullptr;
    }
    // Only advice; a refusal changes nothing. The rest of the block stays in small pages.
    ::madvise(block, inLargePages, MADV_HUGEPAGE);
    return block;
}

void FreePixelMemory(void* block) noexcept {
    std::free(block);
}

} // namespace VFoundation
