// The linker routes the C allocator of the test program, but not that of its shared libraries, through the __wrap
// functions below.

#include "tests/support/FailingAllocator.h"

#include "foundation/core/VException.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

namespace {

long s_countdown = 0; // 0: nothing fails
bool s_failed = false;

bool MustFail() {
    if (s_countdown > 0 && --s_countdown == 0) {
        s_failed = true;
        return true;
    }
    return false;
}

} // namespace

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);

void* __wrap_malloc(std::size_t size) {
    return MustFail() ? nullptr : __real_malloc(size);
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
    return MustFail() ? nullptr : __real_calloc(count, size);
}
void* __wrap_realloc(void* block, std::size_t size) {
    return MustFail() ? nullptr : __real_realloc(block, size);
}
void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    return MustFail() ? nullptr : __real_aligned_alloc(alignment, size);
}
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = MustFail() ? nullptr : __real_malloc(size ? size : 1);
    if (!block) {
        throw std::bad_alloc();
    }
    return block;
}
// A sanitizer's own array and nothrow forms would not come here.
[[gnu::noinline]] void* operator new[](std::size_t size) {
    return ::operator new(size);
}
[[gnu::noinline]] void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return MustFail() ? nullptr : __real_malloc(size ? size : 1);
}
[[gnu::noinline]] void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return ::operator new(size, std::nothrow);
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete[](void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete[](void* block, std::size_t) noexcept {
    std::free(block);
}

namespace testing_support {

void FailEachAllocation(std::function<void()> const& work) {
    using VFoundation::VException;
    long n = 1;
    do {
        ASSERT_LT(n, 10000) << "never ends";
        SCOPED_TRACE("allocation " + std::to_string(n));
        s_failed = false;
        s_countdown = n++;
        try {
            work();
        } catch (VException const& exception) {
            EXPECT_EQ(exception.Id(), VException::eOutOfMemory);
        } catch (std::bad_alloc const&) { // an object could not be made
        }
        s_countdown = 0;
    } while (s_failed);
    EXPECT_GT(n, 2) << "nothing was allocated";
}

bool AllocationHasFailed() {
    return s_failed;
}

} // namespace testing_support
