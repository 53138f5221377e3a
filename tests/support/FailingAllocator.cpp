#include "tests/support/FailingAllocator.h"

#include "foundation/core/VException.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <mutex>
#include <new>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);
void __real_free(void* block);
}

namespace {

constexpr std::size_t kEntries = std::size_t{1} << 20;
constexpr std::uintptr_t kRemoved = 1; // there was a block in this place

std::mutex s_lock;
/// The blocks that are alive: libc's own are freed through here too and must not count.
std::uintptr_t s_blocks[kEntries];
long s_live = 0;
long s_number = 0;
long s_failAt = 0;
bool s_onward = false;
bool s_failed = false;
std::size_t s_sizes[1 << 16];
std::size_t s_sizeCount = 0;
bool s_isRecording = false;

std::size_t SlotOf(std::uintptr_t block) {
    return (block * 0x9e3779b97f4a7c15U >> 40) % kEntries;
}

bool MustFail(std::size_t size) {
    std::lock_guard const lock(s_lock);
    ++s_number;
    if (s_isRecording && s_sizeCount < std::size(s_sizes)) {
        s_sizes[s_sizeCount++] = size;
    }
    bool const fails = s_failAt > 0 && (s_number == s_failAt || (s_onward && s_number > s_failAt));
    s_failed = s_failed || fails;
    return fails;
}

void* Born(void* block) {
    if (block) {
        std::lock_guard const lock(s_lock);
        auto const address = reinterpret_cast<std::uintptr_t>(block);
        std::size_t slot = SlotOf(address);
        while (s_blocks[slot] > kRemoved) {
            slot = (slot + 1) % kEntries;
        }
        s_blocks[slot] = address;
        ++s_live;
    }
    return block;
}

void Gone(void* block) {
    std::lock_guard const lock(s_lock);
    auto const address = reinterpret_cast<std::uintptr_t>(block);
    for (std::size_t slot = SlotOf(address); s_blocks[slot] != 0; slot = (slot + 1) % kEntries) {
        if (s_blocks[slot] == address) {
            // A removed entry at the end of a row of entries is as good as none.
            s_blocks[slot] = s_blocks[(slot + 1) % kEntries] == 0 ? 0 : kRemoved;
            --s_live;
            return;
        }
    }
}

} // namespace

extern "C" {
void* __wrap_malloc(std::size_t size) {
    return MustFail(size) ? nullptr : Born(__real_malloc(size));
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
    return MustFail(count * size) ? nullptr : Born(__real_calloc(count, size));
}
void* __wrap_realloc(void* block, std::size_t size) {
    if (MustFail(size)) {
        return nullptr;
    }
    Gone(block); // before it can be another's
    return Born(__real_realloc(block, size));
}
void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    return MustFail(size) ? nullptr : Born(__real_aligned_alloc(alignment, size));
}
void __wrap_free(void* block) {
    if (block) {
        Gone(block);
        __real_free(block);
    }
}
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    if (void* const block = __wrap_malloc(size ? size : 1)) {
        return block;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t size, std::align_val_t alignment) {
    if (void* const block = ::operator new(size, alignment, std::nothrow)) {
        return block;
    }
    throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return __wrap_malloc(size ? size : 1);
}
// A sanitizer's own array and nothrow forms would not come here.
[[gnu::noinline]] void* operator new(std::size_t size, std::align_val_t alignment,
                                     std::nothrow_t const&) noexcept {
    auto const step = static_cast<std::size_t>(alignment);
    return __wrap_aligned_alloc(step, (size + step - 1) / step * step);
}
[[gnu::noinline]] void* operator new[](std::size_t size) {
    return ::operator new(size);
}
[[gnu::noinline]] void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return ::operator new(size, std::nothrow);
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    __wrap_free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    __wrap_free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::align_val_t) noexcept {
    __wrap_free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    __wrap_free(block);
}
[[gnu::noinline]] void operator delete[](void* block) noexcept {
    __wrap_free(block);
}
[[gnu::noinline]] void operator delete[](void* block, std::size_t) noexcept {
    __wrap_free(block);
}

namespace testing_support {

void FailEachAllocation(std::function<void()> const& work) {
    using VFoundation::VException;
    long n = 1;
    do {
        ASSERT_LT(n, 10000) << "never ends";
        SCOPED_TRACE("allocation " + std::to_string(n));
        FailingAllocator::FailAt(n++, false);
        try {
            work();
        } catch (VException const& exception) {
            EXPECT_EQ(exception.Id(), VException::eOutOfMemory);
        } catch (std::bad_alloc const&) { // an object could not be made
        }
        FailingAllocator::FailAt(0, false);
    } while (AllocationHasFailed());
    EXPECT_GT(n, 2) << "nothing was allocated";
}

bool AllocationHasFailed() {
    std::lock_guard const lock(s_lock);
    return s_failed;
}

void FailingAllocator::FailAt(long n, bool onward) {
    std::lock_guard const lock(s_lock);
    if (n > 0) {
        s_number = 0;
        s_failed = false;
    }
    s_failAt = n;
    s_onward = onward;
}

long FailingAllocator::LiveBlocks() {
    std::lock_guard const lock(s_lock);
    return s_live;
}

void FailingAllocator::RecordSizes() {
    std::lock_guard const lock(s_lock);
    s_sizeCount = 0;
    s_isRecording = true;
}

std::vector<std::size_t> FailingAllocator::RecordedSizes() {
    {
        std::lock_guard const lock(s_lock);
        s_isRecording = false;
    }
    return {s_sizes, s_sizes + s_sizeCount};
}

} // namespace testing_support
