#include "tests/support/FailingNew.h"

#include <cstdlib>
#include <new>
#include <utility>

thread_local long testing_support::t_failingNew = 0;
thread_local std::function<void()> const* testing_support::t_onNew = nullptr;

namespace {

bool MustFail() noexcept {
    if (auto const* const action = std::exchange(testing_support::t_onNew, nullptr)) {
        (*action)();
    }
    long& failing = testing_support::t_failingNew;
    return failing > 0 && --failing == 0;
}

void* Allocated(std::size_t size) noexcept {
    return MustFail() ? nullptr : std::malloc(size ? size : 1);
}

/// For types that want more than the usual alignment; their size is a multiple of it.
void* Allocated(std::size_t size, std::align_val_t alignment) noexcept {
    return MustFail() ? nullptr : std::aligned_alloc(static_cast<std::size_t>(alignment), size);
}

void* OrThrow(void* block) {
    return block ? block : throw std::bad_alloc();
}

} // namespace

[[gnu::noinline]] void* operator new(std::size_t size) {
    return OrThrow(Allocated(size));
}
[[gnu::noinline]] void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return Allocated(size);
}
[[gnu::noinline]] void* operator new(std::size_t size, std::align_val_t alignment) {
    return OrThrow(Allocated(size, alignment));
}
[[gnu::noinline]] void* operator new(std::size_t size, std::align_val_t alignment,
                                     std::nothrow_t const&) noexcept {
    return Allocated(size, alignment);
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::align_val_t) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t, std::align_val_t) noexcept {
    std::free(block);
}
