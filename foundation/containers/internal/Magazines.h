#pragma once

#include "foundation/core/Mutex.h"
#include "foundation/core/VAtomicOp.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace VFoundation {

class VFileInfo;
class VObject;
class VObjectArray;
class VString;

namespace detail {

/// A few pooled objects that a thread keeps at hand, first in, first out. Whoever uses one enters it first; whoever
/// finds it entered does without, so that no thread ever waits for another.
///
/// Any thread enters by a locked operation. The one that the magazine belongs to needs none once it has been alone for
/// a while: the next other thread then ends that state by a barrier on all threads (`ProcessBarrier`), before it looks
/// whether the owner is inside.
///
/// Ownership: adopts what is put in and hands the reference to whoever takes the object out. A magazine has no
/// destructor; `Magazines::ReleaseAll` empties it.
/// Threads: any.
class Magazine {
  public:
    static constexpr std::uint32_t kSize = 16;

    constexpr Magazine() noexcept = default;
    Magazine(Magazine const&) = delete;
    Magazine& operator=(Magazine const&) = delete;

    /// Objects inside. Other threads may have changed it since.
    std::uint32_t Count() const noexcept { return m_count.load(std::memory_order_acquire); }

    /// A thread's stay inside, for a scope; false when another thread is inside.
    class Visit;

    // For the thread that is inside.

    /// False, with the reference still the caller's, when the magazine is full.
    bool Put(VObject* object) noexcept {
        std::uint32_t const count = m_count.load(std::memory_order_relaxed);
        if (count == kSize) {
            return false;
        }
        m_objects[(m_first + count) % kSize] = object;
        m_count.store(count + 1, std::memory_order_release);
        return true;
    }
    /// The oldest object; null when there is none.
    VObject* Take() noexcept {
        std::uint32_t const count = m_count.load(std::memory_order_relaxed);
        if (count == 0) {
            return nullptr;
        }
        VObject* const object = m_objects[m_first];
        m_first = (m_first + 1) % kSize;
        m_count.store(count - 1, std::memory_order_release);
        return object;
    }

  private:
    /// Visits of the owner, without one of another thread, until it needs no locked operation any more.
    static constexpr std::uint32_t kVisitsUntilOwned = 1024;

    bool EnterOwned() noexcept {
        if (!m_isOwned.load(std::memory_order_relaxed)) {
            return false;
        }
        m_isOwnerInside.store(true, std::memory_order_relaxed);
        std::atomic_signal_fence(std::memory_order_seq_cst); // the others' barrier orders it for them
        if (m_isOwned.load(std::memory_order_relaxed)) {
            return true;
        }
        LeaveOwned();
        return false;
    }
    void LeaveOwned() noexcept { m_isOwnerInside.store(false, std::memory_order_release); }
    bool EnterLocked() noexcept {
        bool isEntered = false;
        return VAtomicOp::CompareAndSwap(m_isEntered, isEntered, true);
    }
    void LeaveLocked() noexcept { m_isEntered.store(false, std::memory_order_release); }
    void CountVisitOfOwner() noexcept {
        if (++m_visitsOfOwner == kVisitsUntilOwned) {
            BeginOwning();
        }
    }
    void BeginOwning() noexcept;
    bool EndOwning() noexcept;

    // A cache line that other threads only read, unless they look for objects. release: hands over what is inside.
    alignas(64) std::atomic<bool> m_isEntered{false};
    std::atomic<bool> m_isOwnerInside{false}; // without `m_isEntered`; relaxed to set: the barrier orders it
    std::atomic<bool> m_isOwned{false};       // relaxed: changes with `m_isEntered` only
    std::uint32_t m_visitsOfOwner = 0;
    std::uint32_t m_first = 0;
    std::atomic<std::uint32_t> m_count{0}; // relaxed inside; release and acquire: for those who count
    VObject* m_objects[kSize] = {};
};

class Magazine::Visit {
  public:
    Visit(Magazine& magazine, bool asOwner) noexcept : m_magazine(magazine) {
        if (asOwner && magazine.EnterOwned()) {
            m_stay = Stay::eOwned;
        } else if (magazine.EnterLocked()) {
            m_stay = Stay::eLocked;
            if (asOwner) {
                magazine.CountVisitOfOwner();
            } else if (!magazine.EndOwning()) {
                magazine.LeaveLocked();
                m_stay = Stay::eNone;
            }
        }
    }
    Visit(Visit const&) = delete;
    Visit& operator=(Visit const&) = delete;
    ~Visit() {
        if (m_stay == Stay::eOwned) {
            m_magazine.LeaveOwned();
        } else if (m_stay == Stay::eLocked) {
            m_magazine.LeaveLocked();
        }
    }
    explicit operator bool() const noexcept { return m_stay != Stay::eNone; }

  private:
    enum class Stay { eNone, eOwned, eLocked };

    Magazine& m_magazine;
    Stay m_stay = Stay::eNone;
};

/// The magazines of one pool. Each thread has one of them by its number; beyond `kCount` threads, several have the
/// same. They are never given back: what a thread leaves in its magazine when it ends stays in the pool, for others to
/// find, and its end needs no code.
///
/// Threads: any.
class Magazines {
  public:
    static constexpr std::uint32_t kCount = 64;

    constexpr Magazines() noexcept = default;
    Magazines(Magazines const&) = delete;
    Magazines& operator=(Magazines const&) = delete;

    /// To be called before threads use the pool, better still before there are any.
    static void Prepare() noexcept;

    /// The calling thread's.
    Magazine& Own() noexcept { return m_magazines[ThreadNumber() % kCount]; }
    /// False for a thread that has another one's.
    static bool IsOwner() noexcept { return ThreadNumber() < kCount; }
    /// An object of any thread (owned); null when there is none.
    VObject* TakeAny() noexcept;
    /// Releases what is inside, once for each magazine. Waits for threads that are in one.
    void ReleaseAll();

    /// Objects in all magazines.
    long CountAll() const noexcept;
    /// The same, but never too low: a magazine that a thread is inside of counts as full.
    long CountAtMost() noexcept;

    /// Held while an object goes into a ring that is nearly full, so that two threads do not both take the last room.
    Mutex m_lastRoom;

  private:
    static std::uint32_t ThreadNumber() noexcept {
        return (s_ownNumber != 0 ? s_ownNumber : NumberThread()) - 1;
    }
    static std::uint32_t NumberThread() noexcept;
    /// How many of the magazines can hold anything.
    static std::uint32_t UsedCount() noexcept;

    static constinit thread_local std::uint32_t s_ownNumber; // counted from 1; 0: none yet

    Magazine m_magazines[kCount];
};

/// The magazines of the pool of `T`; null for a pool that is its ring alone.
template <class T>
inline constexpr std::nullptr_t kMagazines = nullptr;

extern Magazines g_stringMagazines;
extern Magazines g_arrayMagazines;
extern Magazines g_fileInfoMagazines;
template <>
inline constexpr Magazines* kMagazines<VString> = &g_stringMagazines;
template <>
inline constexpr Magazines* kMagazines<VObjectArray> = &g_arrayMagazines;
template <>
inline constexpr Magazines* kMagazines<VFileInfo> = &g_fileInfoMagazines;

} // namespace detail

} // namespace VFoundation
