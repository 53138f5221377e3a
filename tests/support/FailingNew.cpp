#include "tests/support/FailingNew.h"

#include <cstdlib>
#include <new>

thread_local long testing_support::t_failingNew = 0;

[[gnu::noinline]] void* operator new(std::size_t size) {
    long& failing = testing_support::t_failingNew;
    void* const block = failing > 0 && --failing == 0 ? nullptr : std::malloc(size ? size : 1);
    if (!block) {
        throw std::bad_alloc();
    }
    return block;
}
[[gnu::noinline]] void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    try {
        return operator new(size);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
