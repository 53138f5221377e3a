#pragma once

#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/internal/ClassOwned.h"

#include <atomic>

namespace VFoundation {

/// The free list of a recycled class: instead of dying, objects wait in a ring until the class's factory
/// hands them out again. This is the mechanism only; the class decides when an object may be pooled.
///
///     void VThing::Release() const {
///         if (ms_bRecyclingEnabled && RetainCount() == 1 && !m_bRecycled) {
///             ... empty the object ...
///             if (TRecyclePool<VThing>::Push(ms_recycledThings, this, &VThing::m_bRecycled)) {
///                 return;                                  // the object may already be someone else's
///             }
///         }
///         VObject::Release();
///     }
///
/// Whoever reads a count of 1 sees all that former holders did before they released.
/// The mark, a `bool` member of the object, is true while it is pooled and keeps it from being pooled twice,
/// also while the pool itself lets go of it. It is written only by the one thread that holds the object, and
/// the ring orders these writes.
///
/// Ownership: the pool adopts the reference of whoever pushes and hands it to whoever pops.
/// Threads: `Create`, `Push`, `Pop` and `Count` from any thread. `Destroy` belongs to the class's
/// `UninitializeClass`, when no other thread uses the pool.
template <class T>
class TRecyclePool {
  public:
    using Ring = VObjectRingBufferTmpl<T>;
    using Slot = std::atomic<Ring*>;
    using Mark = bool T::*;

    TRecyclePool() = delete;

    /// Makes the pool if there is none.
    static void Create(Slot& pool, unsigned long capacity) {
        // Making the ring may make the class's record, and with it this very pool.
        detail::MakeOnce(pool, [capacity] { return new Ring(capacity); });
    }

    /// Ends the pool and every object in it; nothing when there is none.
    static void Destroy(Slot& pool) { detail::ReleaseAndClear(pool); }

    /// Objects waiting; 0 without a pool.
    static long Count(Slot const& pool) noexcept {
        Ring const* const ring = pool.load(std::memory_order_acquire);
        return ring ? ring->UsedCount() : 0;
    }

    /// A pooled object (owned), its mark cleared; null when there is none.
    static T* Pop(Slot const& pool, Mark mark) {
        Ring* const ring = pool.load(std::memory_order_acquire);
        T* object = nullptr;
        if (!ring || ring->UsedCount() == 0 || !ring->Pop(&object)) {
            return nullptr;
        }
        object->*mark = false;
        return object;
    }

    /// Adopts the caller's reference: do not touch the object after a true result. False, the mark cleared
    /// and the reference still the caller's, when there is no pool or it is full.
    static bool Push(Slot const& pool, T const* object, Mark mark) {
        Ring* const ring = pool.load(std::memory_order_acquire);
        if (!ring) {
            return false;
        }
        T* const pooled = const_cast<T*>(object); // only the last holder of an object pools it
        pooled->*mark = true;
        if (ring->PushAdopted(pooled)) {
            return true;
        }
        pooled->*mark = false;
        return false;
    }
};

} // namespace VFoundation
