#pragma once

#include "foundation/core/Export.h"

#include <atomic>
#include <cstdint>
#include <type_traits>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#endif

namespace VFoundation {

/// The atomic operations that the library counts and links with. All are sequentially consistent.
///
/// Threads: any thread may call any of them on the same word.
class VFOUNDATION_API VAtomicOp {
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
    static bool AtomicCompareAndSwapPtr(void volatile** target, void* newValue, void* expected) {
        void volatile* found = expected;
        return __atomic_compare_exchange_n(target, &found, newValue, false, __ATOMIC_SEQ_CST,
                                           __ATOMIC_SEQ_CST);
    }
    static bool AtomicCompareAndSwapPtr(void* volatile* target, void* newValue, void* expected) {
        return __atomic_compare_exchange_n(target, &expected, newValue, false, __ATOMIC_SEQ_CST,
                                           __ATOMIC_SEQ_CST);
    }

    /// Adds `delta` to a count and returns the new value; wraps. While the process has only ever had one thread
    /// no other core can see the word, so the bus lock is left out. `CompareAndSwap` does the same.
    template <class Word>
    static Word AddToCount(std::atomic<Word>& count, Word delta) noexcept {
        using Unsigned = std::make_unsigned_t<Word>;
        auto const sum = [delta](Word old) {
            return static_cast<Word>(static_cast<Unsigned>(old) + static_cast<Unsigned>(delta));
        };
        if (ProcessIsSingleThreaded()) { // relaxed: there is no other thread
            Word const value = sum(count.load(std::memory_order_relaxed));
            count.store(value, std::memory_order_relaxed);
            return value;
        }
        return sum(count.fetch_add(delta));
    }

    /// Stores `desired` when the word (a `std::atomic` or `std::atomic_ref`) holds `expected`; otherwise
    /// `expected` gets what it holds.
    template <class Word, class Value>
    static bool CompareAndSwap(Word&& word, Value& expected, Value desired) noexcept {
        if (ProcessIsSingleThreaded()) { // relaxed: there is no other thread
            Value const found = word.load(std::memory_order_relaxed);
            if (found != expected) {
                expected = found;
                return false;
            }
            word.store(desired, std::memory_order_relaxed); // relaxed, as above
            return true;
        }
        return word.compare_exchange_strong(expected, desired);
    }

  private:
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
