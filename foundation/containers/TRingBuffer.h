#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/TRefCounted.h"
#include "foundation/core/VAtomicOp.h"
#include "foundation/core/VObject.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <new>
#include <type_traits>

namespace VFoundation {

template <class T>
class TRecyclePool;

namespace detail {

/// The slot for the record of the ring buffers of one element class. Slots are kept by name and never freed. They
/// stand here and not in the template, whose statics each shared object would have for itself.
VFOUNDATION_API VClass*& RingBufferClassSlot(char const* elementClassName);

/// Fills `slot` with the record "TRingBuffer_<elementClassName>", made or entered in the registry again. A
/// record of that name that the slot does not own is returned without being kept.
VFOUNDATION_API VClass* MakeRingBufferClass(char const* elementClassName, VClass*& slot,
                                            VClass::Factory factory, unsigned long size);

/// A counter of units and the cursor that moves whenever a unit is added, in one word, so that both take one atomic
/// operation. The low half is the count, biased so that it never borrows from the high half, the cursor.
struct RingWord {
    static constexpr std::uint32_t kBias = 0x80000000U;
    static constexpr int kCursorShift = 32;
    static constexpr std::uint64_t kUnit = 1;
    static constexpr std::uint64_t kStep = std::uint64_t{1} << kCursorShift;

    static constexpr std::uint64_t Of(std::int32_t count, std::uint32_t cursor) noexcept {
        return cursor * kStep | (static_cast<std::uint32_t>(count) ^ kBias);
    }
    static constexpr std::int32_t Count(std::uint64_t word) noexcept {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(word & 0xFFFFFFFFU) ^ kBias);
    }
    static constexpr std::uint32_t Cursor(std::uint64_t word) noexcept {
        return static_cast<std::uint32_t>(word >> kCursorShift);
    }
};

/// Adds to a ring's word, modulo 2^64; the result is the new value. A `std::atomic` takes the short cut of the
/// reference counts (`VAtomicOp`), as pools are rings too; the stand-ins that tests use have no short cut.
template <class Word>
std::uint64_t AddAndGet(Word& word, std::uint64_t delta) {
    if constexpr (std::is_same_v<Word, std::atomic<std::uint64_t>>) {
        return VAtomicOp::AddToCount(word, delta);
    } else {
        return word += delta;
    }
}

/// Compare-and-swap likewise; `expected` gets what was found when it differs.
template <class Pointer, class Word>
bool CompareAndSwap(Word&& word, Pointer& expected, Pointer desired) {
    using Plain = std::remove_reference_t<Word>;
    if constexpr (std::is_same_v<Plain, std::atomic<Pointer>> ||
                  std::is_same_v<Plain, std::atomic_ref<Pointer>>) {
        return VAtomicOp::CompareAndSwap(word, expected, desired);
    } else {
        return word.compare_exchange_strong(expected, desired);
    }
}

} // namespace detail

/// A bounded queue of counted objects that any number of threads push to and pop from without a lock. It
/// never grows: pushing to a full ring and popping from an empty one fail at once. Make one as a
/// `VObjectRingBufferTmpl<T>`.
///
/// Order: first in, first out with one producer and one consumer; approximately so with more, so do not
/// depend on the order between concurrent producers. There is no waiting: pair the ring with a semaphore if
/// consumers sleep.
///
/// How it works: a thread claims a unit of a counter (of free slots to push, of used ones to pop), which guarantees
/// it a slot of the right kind; it searches for one from the shared cursor, takes it by compare-and-swap and
/// moves the cursor one slot on from wherever it stands by then. Counters, cursors and slots are
/// sequentially consistent: the slot's swap hands over the object with all that was written to it.
///
/// DELIBERATE: a search gives up after 100 wraps past the last slot and its claimed unit is not given back;
/// each such failure makes the ring one unit smaller for good.
///
/// Ownership: retains what is pushed; a pop hands that reference to the caller; the destructor releases the
/// rest.
/// Threads: `Push`, `Pop`, `RemoveAllObjects` and `UsedCount` from any thread.
///
/// `Policy` says how objects are retained. `Atomic` and `AtomicRef` are `std::atomic` and `std::atomic_ref`,
/// or stand-ins that let a test decide which thread comes next.
template <class T, class Policy = TRefCounted<T>, template <class> class Atomic = std::atomic,
          template <class> class AtomicRef = std::atomic_ref>
class VFOUNDATION_API TRingBuffer : public VObject {
  public:
    /// What a search may wrap past the last slot before it gives up.
    static constexpr int kWrapAllowance = 100;

    /// Room for `capacity` objects. A capacity beyond 2147483647, which a negative one becomes on the way
    /// here, counts as 2147483647. Throws `std::bad_alloc`.
    explicit TRingBuffer(unsigned long capacity)
        : VObject(TheClass()), m_nCapacity(UsableCapacity(capacity)), m_nCursorEnd(EndFor(m_nCapacity)),
          m_pSlots(AllocateSlots(m_nCapacity)),
          m_freeAndRead(detail::RingWord::Of(static_cast<std::int32_t>(m_nCapacity), 0)) {}
    /// A ring without slots, which the class record's factory makes: every push and pop fails.
    TRingBuffer() : VObject(TheClass()) {}
    TRingBuffer(TRingBuffer const&) = delete;
    TRingBuffer& operator=(TRingBuffer const&) = delete;
    ~TRingBuffer() override;

    /// The record "TRingBuffer_" + the name of `T`; one in the process, whichever shared object asks.
    static VClass* TheClass();
    static VObject* New() { return new TRingBuffer(); }
    static void InitializeClass() {}
    static void UninitializeClass() {}

    /// Retains and stores; false, with nothing retained, when `object` is null or the ring is full.
    bool Push(T* object);

    /// Takes an object out; the caller owns it. False, `*out` untouched, when `out` is null or the ring is
    /// empty.
    bool Pop(T** out);

    /// Pops and releases as many objects as the ring held on entry; false as soon as a pop fails.
    bool RemoveAllObjects();

    /// Objects that a pop may still claim; never below 0. Other threads may have changed it since.
    long UsedCount() const noexcept {
        return std::max<long>(0, detail::RingWord::Count(m_usedAndWrite.load()));
    }
    unsigned long Capacity() const noexcept { return m_nCapacity; }

  protected:
    static constexpr std::uint32_t UsableCapacity(unsigned long capacity) noexcept {
        constexpr unsigned long kLargest = std::numeric_limits<std::int32_t>::max();
        return static_cast<std::uint32_t>(std::min(capacity, kLargest));
    }

    /// As `Push`, but takes over the caller's reference; the caller keeps it when the push fails.
    bool PushAdopted(T* object) { return object && ClaimUnit(m_freeAndRead) && FillSlot(object); }

    /// A counter and its cursor, for tests that put a ring into a state which only a rare schedule reaches.
    class CounterRef {
      public:
        explicit CounterRef(Atomic<std::uint64_t>& word) noexcept : m_word(word) {}
        operator std::int32_t() const { return detail::RingWord::Count(m_word.load()); }
        void operator=(std::int32_t count) { m_word.store(detail::RingWord::Of(count, Cursor())); }
        std::uint32_t Cursor() const { return detail::RingWord::Cursor(m_word.load()); }
        void SetCursor(std::uint32_t cursor) { m_word.store(detail::RingWord::Of(*this, cursor)); }

      private:
        Atomic<std::uint64_t>& m_word;
    };
    CounterRef UsedWord() noexcept { return CounterRef(m_usedAndWrite); }
    CounterRef FreeWord() noexcept { return CounterRef(m_freeAndRead); }

    /// A cursor counts slots and stands for its remainder by the capacity. At this multiple of the capacity it goes
    /// back to 0; with a power of two it may pass all 32 bits instead.
    std::uint32_t CursorEnd() const noexcept { return m_nCursorEnd; }

  private:
    template <class U>
    friend class TRecyclePool;

    static constexpr std::size_t kCacheLine = 64;
    using Slot = T*;

    static constexpr std::uint32_t EndFor(std::uint32_t capacity) noexcept {
        return capacity == 0 || std::has_single_bit(capacity) ? 0 : 0x80000000U / capacity * capacity;
    }
    static Slot* AllocateSlots(std::uint32_t count);
    static bool ClaimUnit(Atomic<std::uint64_t>& word);
    Slot* SlotAt(std::uint32_t cursor) const noexcept {
        bool const isPowerOfTwo = m_nCursorEnd == 0;
        return m_pSlots + (isPowerOfTwo ? cursor & (m_nCapacity - 1) : cursor % m_nCapacity);
    }
    Slot* FindSlot(Atomic<std::uint64_t> const& word, bool filled, T*& content) const;
    void Advance(Atomic<std::uint64_t>& word) const;
    bool FillSlot(T* object);

    std::uint32_t m_nCapacity = 0;
    std::uint32_t m_nCursorEnd = 0;
    Slot* m_pSlots = nullptr;
    // A push ends by adding a used unit and moving the write cursor, a pop by adding a free unit and moving the read
    // cursor: these pairs share a word. Each word has a cache line of its own, so that producers and consumers do not
    // slow each other down.
    alignas(kCacheLine) Atomic<std::uint64_t> m_usedAndWrite{detail::RingWord::Of(0, 0)};
    alignas(kCacheLine) Atomic<std::uint64_t> m_freeAndRead{detail::RingWord::Of(0, 0)};
};

template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
TRingBuffer<T, Policy, Atomic, AtomicRef>::~TRingBuffer() {
    RemoveAllObjects();
    // Objects whose unit was lost are no longer counted, but still here.
    if (FreeWord() != static_cast<std::int32_t>(m_nCapacity)) {
        for (Slot* slot = m_pSlots; slot != m_pSlots + m_nCapacity; ++slot) {
            if (*slot) {
                Policy::Release(*slot);
            }
        }
    }
    std::free(m_pSlots);
}

template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
VClass* TRingBuffer<T, Policy, Atomic, AtomicRef>::TheClass() {
    static constinit std::atomic<VClass**> s_slot{nullptr}; // release and acquire: hand over the slot
    VClass** slot = s_slot.load(std::memory_order_acquire);
    if (!slot) {
        slot = &detail::RingBufferClassSlot(Policy::ClassName());
        s_slot.store(slot, std::memory_order_release);
    }
    VClass* const cls = LoadClassSlot(*slot);
    if (cls && cls->IsReady()) {
        return cls;
    }
    return detail::MakeRingBufferClass(Policy::ClassName(), *slot, &TRingBuffer::New, sizeof(TRingBuffer));
}

template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
bool TRingBuffer<T, Policy, Atomic, AtomicRef>::Push(T* object) {
    if (!object || !ClaimUnit(m_freeAndRead)) {
        return false;
    }
    Policy::Retain(object);
    if (FillSlot(object)) {
        return true;
    }
    Policy::Release(object);
    return false;
}

template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
bool TRingBuffer<T, Policy, Atomic, AtomicRef>::Pop(T** out) {
    if (!out || !ClaimUnit(m_usedAndWrite)) {
        return false;
    }
    T* found = nullptr;
    for (;;) {
        Slot* const slot = FindSlot(m_freeAndRead, true, found);
        if (!slot) {
            return false;
        }
        Slot expected = found;
        if (detail::CompareAndSwap<Slot>(AtomicRef<Slot>(*slot), expected, nullptr)) {
            break;
        }
    }
    Advance(m_freeAndRead);
    *out = found;
    return true;
}

template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
bool TRingBuffer<T, Policy, Atomic, AtomicRef>::RemoveAllObjects() {
    for (std::int32_t left = UsedWord(); left > 0; --left) {
        T* object = nullptr;
        if (!Pop(&object)) {
            return false;
        }
        Policy::Release(object);
    }
    return true;
}

/// Zeroed memory that is not touched: the pages of a very large ring cost nothing until they are used.
template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
auto TRingBuffer<T, Policy, Atomic, AtomicRef>::AllocateSlots(std::uint32_t count) -> Slot* {
    if (count == 0) {
        return nullptr;
    }
    auto* const slots = static_cast<Slot*>(std::calloc(count, sizeof(Slot)));
    if (!slots) {
        throw std::bad_alloc();
    }
    return slots;
}

template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
bool TRingBuffer<T, Policy, Atomic, AtomicRef>::ClaimUnit(Atomic<std::uint64_t>& word) {
    using Word = detail::RingWord;
    if (Word::Count(word.load()) <= 0) {
        return false; // as taking a unit and giving it back would tell, without a write
    }
    if (Word::Count(detail::AddAndGet(word, std::uint64_t{0} - Word::kUnit)) < 0) {
        detail::AddAndGet(word, Word::kUnit);
        return false;
    }
    return true;
}

/// The first filled or empty slot from the cursor on, with what it held; null when the search gave up.
template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
auto TRingBuffer<T, Policy, Atomic, AtomicRef>::FindSlot(Atomic<std::uint64_t> const& word, bool filled,
                                                         T*& content) const -> Slot* {
    Slot* slot = SlotAt(detail::RingWord::Cursor(word.load()));
    for (int allowance = kWrapAllowance;;) {
        content = AtomicRef<Slot>(*slot).load();
        if ((content != nullptr) == filled) {
            return slot;
        }
        if (++slot == m_pSlots + m_nCapacity) {
            slot = m_pSlots;
            if (allowance-- == 0) {
                return nullptr;
            }
        }
    }
}

/// Adds a unit and moves the cursor on from where it stands now, which need not be the slot just taken.
template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
void TRingBuffer<T, Policy, Atomic, AtomicRef>::Advance(Atomic<std::uint64_t>& word) const {
    using Word = detail::RingWord;
    std::uint32_t const cursor = Word::Cursor(detail::AddAndGet(word, Word::kUnit + Word::kStep));
    std::uint32_t const end = CursorEnd();
    if (end != 0 && cursor == end) {
        // One thread gets here each time round. What others see meanwhile has the same remainder.
        detail::AddAndGet(word, std::uint64_t{0} - end * Word::kStep);
    }
}

/// The second half of a push, after a free unit was claimed; false when the search gave up.
template <class T, class Policy, template <class> class Atomic, template <class> class AtomicRef>
bool TRingBuffer<T, Policy, Atomic, AtomicRef>::FillSlot(T* object) {
    for (;;) {
        T* content = nullptr;
        Slot* const slot = FindSlot(m_usedAndWrite, false, content);
        if (!slot) {
            return false;
        }
        if (detail::CompareAndSwap<Slot>(AtomicRef<Slot>(*slot), content, object)) {
            break;
        }
    }
    Advance(m_usedAndWrite);
    return true;
}

} // namespace VFoundation
