#pragma once

#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/containers/internal/Magazines.h"
#include "foundation/core/internal/ClassOwned.h"

#include <atomic>
#include <cstddef>
#include <type_traits>

namespace VFoundation {

/// The free list of a recycled class: instead of dying, objects wait in a ring until the class's factory hands them
/// out again. This is the mechanism only; the class decides when an object may be pooled.
///
///     void VThing::Release() const {
///         if (ms_bRecyclingEnabled && RetainCount() == 1 && !m_bRecycled) {
///             ... empty the object ...
///             if (TRecyclePool<VThing>::Push(ms_recycledThings, this, &VThing::m_bRecycled)) {
///                 return;                                  // another thread may have it already
///             }
///         }
///         VObject::Release();
///     }
///
/// A thread that reads a count of 1 sees all that former holders did before they released. The mark, a `bool` member
/// of the object, is true while it is pooled and keeps it from being pooled twice, also while the pool itself lets go
/// of it. Only the thread that holds the object writes it, and the pool orders these writes.
///
/// Some classes (`detail::kMagazines`) have a magazine for each thread besides the ring, so that threads do not meet in
/// the ring. For one thread the pool is first in, first out: its magazine takes objects only while the ring is empty,
/// and gives its own before those of the ring. Before there is none, the magazines of other threads are searched, too.
/// Ring and magazines hold no more together than the ring alone could.
///
/// Ownership: the pool adopts the reference of the thread that pushes and hands it to the one that pops.
/// Threads: any, apart from `Destroy`, which is for the class's `UninitializeClass`, when no other thread uses the pool.
template <class T>
class TRecyclePool {
  public:
    using Ring = VObjectRingBufferTmpl<T>;
    using Slot = std::atomic<Ring*>;
    using Mark = bool T::*;

    TRecyclePool() = delete;

    /// Makes the pool if there is none.
    static void Create(Slot& pool, unsigned long capacity) {
        if constexpr (kHasMagazines) {
            kMagazines->Prepare();
        }
        // Making the ring may make the class's record, and with it this very pool.
        detail::MakeOnce(pool, [capacity] { return new Ring(capacity); });
    }

    /// Releases every object in the pool.
    static void Empty(Slot const& pool) {
        if (Ring* const ring = RingOf(pool)) {
            EmptyMagazines();
            ring->RemoveAllObjects();
        }
    }

    /// Ends the pool and every object in it; nothing when there is none.
    static void Destroy(Slot& pool) {
        if (Ring* const ring = pool.exchange(nullptr)) {
            EmptyMagazines(); // after the exchange, so that nothing is put into one any more
            ring->Release();
        }
    }

    /// Objects waiting; 0 without a pool.
    static long Count(Slot const& pool) noexcept {
        Ring const* const ring = RingOf(pool);
        if (!ring) {
            return 0;
        }
        if constexpr (kHasMagazines) {
            return ring->UsedCount() + kMagazines->CountAll();
        }
        return ring->UsedCount();
    }

    /// A pooled object (owned), its mark cleared; null when there is none.
    static T* Pop(Slot const& pool, Mark mark) {
        Ring* const ring = RingOf(pool);
        if (!ring) {
            return nullptr;
        }
        T* object = TakeOwn();
        if (!object && (ring->UsedCount() == 0 || !ring->Pop(&object))) {
            object = TakeAny();
        }
        if (object) {
            object->*mark = false;
        }
        return object;
    }

    /// Adopts the caller's reference: do not touch the object after a true result. False, the mark cleared
    /// and the reference still the caller's, when there is no pool or it is full.
    static bool Push(Slot const& pool, T const* object, Mark mark) {
        Ring* const ring = RingOf(pool);
        if (!ring) {
            return false;
        }
        T* const pooled = const_cast<T*>(object); // only the last holder of an object pools it
        pooled->*mark = true;
        if (PutOwn(pool, *ring, pooled) || PutIntoRing(*ring, pooled)) {
            return true;
        }
        pooled->*mark = false;
        return false;
    }

  private:
    static constexpr auto kMagazines = detail::kMagazines<T>;
    static constexpr bool kHasMagazines = !std::is_same_v<decltype(kMagazines), std::nullptr_t const>;
    /// More than all magazines hold.
    static constexpr long kMargin = 4096;

    static Ring* RingOf(Slot const& pool) noexcept {
        return pool.load(std::memory_order_acquire); // acquire: the ring as it was made
    }
    static T* TakeOwn() noexcept {
        T* object = nullptr;
        if constexpr (kHasMagazines) {
            detail::Magazine& own = kMagazines->Own();
            if (own.Count() > 0) {
                detail::Magazine::Visit const visit(own, detail::Magazines::IsOwner());
                object = visit ? static_cast<T*>(own.Take()) : nullptr;
            }
        }
        return object;
    }
    static T* TakeAny() noexcept {
        if constexpr (kHasMagazines) {
            return static_cast<T*>(kMagazines->TakeAny());
        }
        return nullptr;
    }
    static bool PutOwn(Slot const& pool, Ring const& ring, T* object) noexcept {
        bool isPut = false;
        if constexpr (kHasMagazines) {
            detail::Magazine& own = kMagazines->Own();
            if (ring.UsedCount() == 0 && own.Count() < detail::Magazine::kSize) {
                detail::Magazine::Visit const visit(own, detail::Magazines::IsOwner());
                // The magazines are emptied when the ring has gone, and counted when it is nearly full: look again.
                isPut = visit && RingOf(pool) && ring.UsedCount() == 0 && own.Put(object);
            }
        }
        return isPut;
    }
    static bool PutIntoRing(Ring& ring, T* object) {
        if constexpr (kHasMagazines) {
            if (IsNearlyFull(ring)) {
                detail::MutexLock const lock(kMagazines->m_lastRoom);
                return ring.UsedCount() + kMagazines->CountAtMost() < static_cast<long>(ring.Capacity()) &&
                       ring.PushAdopted(object);
            }
        }
        bool const isPut = ring.PushAdopted(object);
        if constexpr (kHasMagazines) {
            if (isPut && IsNearlyFull(ring)) { // other threads filled it between the two questions
                ReleaseSurplus(ring);
            }
        }
        return isPut;
    }
    static bool IsNearlyFull(Ring const& ring) noexcept {
        return ring.UsedCount() + kMargin >= static_cast<long>(ring.Capacity());
    }
    /// Takes an object out again if the pool holds too many.
    static void ReleaseSurplus(Ring& ring) {
        T* surplus = nullptr;
        {
            detail::MutexLock const lock(kMagazines->m_lastRoom);
            if (ring.UsedCount() + kMagazines->CountAll() > static_cast<long>(ring.Capacity())) {
                ring.Pop(&surplus);
            }
        }
        if (surplus) {
            surplus->Release();
        }
    }
    static void EmptyMagazines() {
        if constexpr (kHasMagazines) {
            kMagazines->ReleaseAll();
        }
    }
};

} // namespace VFoundation
