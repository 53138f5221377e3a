#include "foundation/containers/internal/Magazines.h"

#include "foundation/core/VObject.h"

#include <algorithm>
#include <thread>

namespace VFoundation::detail {

constinit Magazines g_stringMagazines;
constinit Magazines g_arrayMagazines;
constinit Magazines g_fileInfoMagazines;

namespace {

constinit std::atomic<std::uint32_t> s_threads{0};

VObject* TakeFrom(Magazine& magazine) noexcept {
    if (magazine.Count() == 0 || !magazine.TryEnter()) {
        return nullptr;
    }
    VObject* const object = magazine.Take();
    magazine.Leave();
    return object;
}

/// False when that would take forever: a child process may have a magazine that a thread of its parent was inside of.
bool EnterSoon(Magazine& magazine) noexcept {
    constexpr int kTries = 1000;
    for (int i = 0; i < kTries; ++i) {
        if (magazine.TryEnter()) {
            return true;
        }
        std::this_thread::yield();
    }
    return false;
}

} // namespace

constinit thread_local std::uint32_t Magazines::s_ownNumber = 0;

std::uint32_t Magazines::NumberThread() noexcept {
    return s_ownNumber = s_threads.fetch_add(1) + 1;
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
        for (std::uint32_t left = Magazine::kSize; left > 0 && EnterSoon(m_magazines[i]); --left) {
            VObject* const object = m_magazines[i].Take();
            m_magazines[i].Leave();
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
        if (m_magazines[i].TryEnter()) {
            count += m_magazines[i].Count();
            m_magazines[i].Leave();
        } else {
            count += Magazine::kSize;
        }
    }
    return count;
}

} // namespace VFoundation::detail
