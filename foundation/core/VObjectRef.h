#pragma once

#include "foundation/core/Export.h"

#include <compare>
#include <concepts>
#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

namespace VFoundation {

/// Holds one counted reference to a `T`, or null. The usual way to keep an object as a member or over a
/// scope.
///
///     auto const name = MakeObject<VString>("a");
///     VObjectRef<VObject> anything = name;                     // a base's reference, from a derived one
///     auto const shared = VObjectRef<VString>::Retaining(text); // one more holder of what is held elsewhere
///
/// Two holders are equal when they hold the same object; `std::hash` goes by the object's address too.
///
/// Ownership: retains what it is given (`Adopt` and `Allocate` take over a reference instead) and releases
/// it.
/// Threads: the holder is for one thread at a time; the object has its own rules.
template <class T>
class VFOUNDATION_API VObjectRef {
  public:
    VObjectRef() noexcept = default;
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions)
    VObjectRef(std::nullptr_t) noexcept {}
    explicit VObjectRef(T* object) : m_object(object) { RetainHeld(); }
    VObjectRef(VObjectRef const& other) : m_object(other.m_object) { RetainHeld(); }
    VObjectRef(VObjectRef&& other) noexcept : m_object(other.Detach()) {}
    /// From a holder of a class derived from `T`.
    template <class U>
    requires std::convertible_to<U*, T*>
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions)
    VObjectRef(VObjectRef<U> const& other) : m_object(other.Get()) {
        RetainHeld();
    }
    template <class U>
    requires std::convertible_to<U*, T*>
    // NOLINTNEXTLINE(google-explicit-constructor,hicpp-explicit-conversions)
    VObjectRef(VObjectRef<U>&& other)
    noexcept : m_object(other.Detach()) {}
    virtual ~VObjectRef() { ReleaseObject(m_object); }

    VObjectRef& operator=(VObjectRef const& other) { // NOLINT(bugprone-unhandled-self-assignment)
        Exchange(other.m_object);
        return *this;
    }
    VObjectRef& operator=(VObjectRef&& other) noexcept {
        if (this != &other) {
            ReleaseObject(std::exchange(m_object, other.Detach()));
        }
        return *this;
    }

    /// A holder that takes over the caller's reference.
    [[nodiscard]] static VObjectRef Adopt(T* object) noexcept {
        VObjectRef ref;
        ref.m_object = object;
        return ref;
    }
    /// A holder with a reference of its own.
    [[nodiscard]] static VObjectRef Retaining(T* object) { return VObjectRef(object); }

    /// Holds `object` instead: retains the new one before it releases the old one.
    void Exchange(T* object) {
        if (object == m_object) {
            return;
        }
        T* const old = std::exchange(m_object, object);
        RetainHeld();
        ReleaseObject(old);
    }

    /// Releases what is held and holds a new `T` from `T::New()`; returns it (borrowed).
    T* Allocate() {
        ReleaseObject(std::exchange(m_object, nullptr));
        m_object = static_cast<T*>(T::New());
        return m_object;
    }

    /// Gives the reference to the caller and holds null.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(m_object, nullptr); }

    [[nodiscard]] T* Get() const noexcept { return m_object; }
    T* operator->() const noexcept { return m_object; }
    T& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

  private:
    void RetainHeld() const {
        if (m_object) {
            m_object->Retain();
        }
    }
    static void ReleaseObject(T* object) {
        if (object) {
            object->Release();
        }
    }

    T* m_object = nullptr;
};

template <class T, class U>
requires std::equality_comparable_with<T*, U*>
bool operator==(VObjectRef<T> const& a, VObjectRef<U> const& b) noexcept {
    return a.Get() == b.Get();
}
template <class T, class U>
requires std::equality_comparable_with<T*, U*>
bool operator==(VObjectRef<T> const& a, U* b) noexcept {
    return a.Get() == b;
}
template <class T>
bool operator==(VObjectRef<T> const& a, std::nullptr_t) noexcept {
    return !a;
}
/// By address, for ordered containers.
template <class T, class U>
requires std::three_way_comparable_with<T*, U*> std::strong_ordering
operator<=>(VObjectRef<T> const& a, VObjectRef<U> const& b) noexcept {
    return std::compare_three_way()(a.Get(), b.Get());
}

namespace detail {

/// `T::New(args...)` is T's own: an inherited factory makes objects of a base.
template <class T, class... Args>
concept HasFactory = requires(Args&&... args) {
    { T::New(std::forward<Args>(args)...) } -> std::convertible_to<T*>;
};

} // namespace detail

/// A new `T` made from `args`: by its factory `T::New`, which may recycle an object, when that takes them, else by its
/// constructor. Null where the factory gives null.
template <class T, class... Args>
[[nodiscard]] VObjectRef<T> MakeObject(Args&&... args) {
    if constexpr (detail::HasFactory<T, Args...>) {
        return VObjectRef<T>::Adopt(T::New(std::forward<Args>(args)...));
    } else {
        static_assert(std::is_constructible_v<T, Args...>,
                      "the class has neither a New() nor a public constructor that takes these arguments");
        return VObjectRef<T>::Adopt(new T(std::forward<Args>(args)...));
    }
}

} // namespace VFoundation

template <class T>
struct std::hash<VFoundation::VObjectRef<T>> {
    std::size_t operator()(VFoundation::VObjectRef<T> const& ref) const noexcept {
        return std::hash<T*>()(ref.Get());
    }
};
