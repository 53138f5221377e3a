#pragma once

#include <atomic>
#include <utility>

namespace VFoundation::detail {

/// The objects that a class owns rather than an instance: singletons, pools and tables, whose pointers start as
/// null and are made on first use or by `InitializeClass`.
///
/// Releases what `object` points to. The pointer is null before the release, whose code may come back here.
template <class T>
void ReleaseAndClear(T*& object) {
    if (T* const released = std::exchange(object, nullptr)) {
        released->Release();
    }
}
template <class T>
void ReleaseAndClear(std::atomic<T*>& object) {
    if (T* const released = object.exchange(nullptr)) {
        released->Release();
    }
}

/// The object in `slot`, which `make` makes when there is none. Of several threads that find none, all get the
/// object that is first in the slot. No lock is held while `make` runs.
template <class T, class Make>
T* MakeOnce(std::atomic<T*>& slot, Make make) {
    T* object = slot.load(std::memory_order_acquire); // acquire: the object as it was made
    if (!object) {
        T* const made = make();
        if (slot.compare_exchange_strong(object, made)) {
            return made;
        }
        made->Release(); // another thread was first
    }
    return object;
}

} // namespace VFoundation::detail
