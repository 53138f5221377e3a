#pragma once

#include <atomic>
#include <cstdint>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace VFoundation {

/// The atomic operations that the library counts and links with. All are sequentially consistent.
///
/// Threads: any thread may call any of them on the same word.
class VAtomicOp {
  public:
    VAtomicOp() = delete;

    /// Adds 1; the result is the new value. Overflow wraps.
    static long AtomicIncrement32(long volatile* value) {
        return __atomic_add_fetch(value, 1L, __ATOMIC_SEQ_CST);
    }
    static std::int32_t AtomicIncrement32(std::int32_t volatile* value) {
        return __atomic_add_fetch(value, 1, __ATOMIC_SEQ_CST);
    }

    /// Subtracts 1; the result is the new value. Overflow wraps.
    static long AtomicDecrement32(long volatile* value) {
        return __atomic_sub_fetch(value, 1L, __ATOMIC_SEQ_CST);
    }
    static std::int32_t AtomicDecrement32(std::int32_t volatile* value) {
        return __atomic_sub_fetch(value, 1, __ATOMIC_SEQ_CST);
    }

    /// Stores `newValue` in `*target` when it holds `expected`; true when stored.
    /// DELIBERATE: the expected value comes last; callers pass target, new value, expected value.
    static bool AtomicCompareAndSwapPtr(void* volatile* target, void* newValue, void* expected) {
        return __atomic_compare_exchange_n(target, &expected, newValue, false, __ATOMIC_SEQ_CST,
                                           __ATOMIC_SEQ_CST);
    }

    /// Adds `delta` to a reference count and returns the new value; wraps. While the process has only ever
    /// had one thread no other core can see the word, so the bus lock is left out.
    static std::int32_t AddToCount(std::atomic<std::int32_t>& count, std::int32_t delta) noexcept {
        if (ProcessIsSingleThreaded()) {
            auto const sum =
                static_cast<std::int32_t>(static_cast<std::uint32_t>(count.load(std::memory_order_relaxed)) +
                                          static_cast<std::uint32_t>(delta));
            count.store(sum, std::memory_order_relaxed);
            return sum;
        }
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(count.fetch_add(delta)) +
                                         static_cast<std::uint32_t>(delta));
    }

    /// True only while no second thread was ever started; false where the system does not tell.
    static bool ProcessIsSingleThreaded() noexcept {
#if __has_include(<sys/single_threaded.h>)
        return __libc_single_threaded != 0;
#else
        return false;
#endif
    }
};

} // namespace VFoundation
