#include "foundation/containers/internal/Magazines.h"

#include "foundation/containers/internal/ProcessBarrier.h"
#include "foundation/core/VObject.h"

#include <algorithm>
#include <thread>

namespace VFoundation::detail {

constinit Magazines g_stringMagazines;
constinit Magazines g_arrayMagazines;
constinit Magazines g_fileInfoMagazines;

namespace {

constinit std::atomic<std::uint32_t> s_threads{0};
constinit std::atomic<bool> s_canBeOwned{false}; // relaxed: true once the barrier is there

VObject* TakeFrom(Magazine& magazine) noexcept {
    if (magazine.Count() == 0) {
        return nullptr;
    }
    Magazine::Visit const visit(magazine, false);
    return visit ? magazine.Take() : nullptr;
}

/// Null also when no visit succeeds for long: a child process may have a magazine that a thread of its parent was
/// inside of.
VObject* TakeSoon(Magazine& magazine) noexcept {
    constexpr int kTries = 1000;
    for (int i = 0; i < kTries; ++i) {
        if (Magazine::Visit const visit(magazine, false); visit) {
            return magazine.Take();
        }
        std::this_thread::yield();
    }
    return nullptr;
}

} // namespace

void Magazine::BeginOwning() noexcept {
    m_isOwned.store(s_canBeOwned.load(std::memory_order_relaxed),
                    std::memory_order_relaxed); // seen after this visit
}

/// False when the owner is inside.
bool Magazine::EndOwning() noexcept {
    m_visitsOfOwner = 0;
    if (m_isOwned.load(std::memory_order_relaxed)) {
        m_isOwned.store(false, std::memory_order_relaxed); // ordered by the barrier
        if (!ProcessBarrier()) {
            m_isOwned.store(true, std::memory_order_relaxed); // it stays the owner's
            return false;
        }
    }
    return !m_isOwnerInside.load(std::memory_order_acquire); // acquire: what the owner left inside
}

constinit thread_local std::uint32_t Magazines::s_ownNumber = 0;

std::uint32_t Magazines::NumberThread() noexcept {
    return s_ownNumber = s_threads.fetch_add(1) + 1;
}

void Magazines::Prepare() noexcept {
    if (!s_canBeOwned.load(std::memory_order_relaxed) && PrepareProcessBarrier()) {
        s_canBeOwned.store(true, std::memory_order_relaxed);
    }
}

std::uint32_t Magazines::UsedCount() noexcept {
    return std::min(s_threads.load(), kCount);
}

VObject* Magazines::TakeAny() noexcept {
    for (std::uint32_t i = 0; i < UsedCount(); ++i) {
        if (VObject* const object = TakeFrom(m_magazines[i])) {
            return object;
        }
    }
    return nullptr;
}

void Magazines::ReleaseAll() {
    for (std::uint32_t i = 0; i < UsedCount(); ++i) {
        // No more than a magazine holds, as other threads may go on putting objects in.
        for (std::uint32_t left = Magazine::kSize; left > 0; --left) {
            VObject* const object = TakeSoon(m_magazines[i]);
            if (!object) {
                break;
            }
            object->Release();
        }
    }
}

long Magazines::CountAll() const noexcept {
    long count = 0;
    for (std::uint32_t i = 0; i < UsedCount(); ++i) {
        count += m_magazines[i].Count();
    }
    return count;
}

long Magazines::CountAtMost() noexcept {
    long count = 0;
    for (std::uint32_t i = 0; i < UsedCount(); ++i) {
        if (Magazine::Visit const visit(m_magazines[i], false); visit) {
            count += m_magazines[i].Count();
        } else {
            count += Magazine::kSize;
        }
    }
    return count;
}

} // namespace VFoundation::detail
