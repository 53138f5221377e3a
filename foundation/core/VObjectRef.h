#pragma once

#include <type_traits>
#include <utility>

namespace VFoundation {

/// Holds one counted reference to a `T`, or null. The usual way to keep an object as a member or over a
/// scope.
///
///     VObjectRef<VString> name = VObjectRef<VString>::Adopt(VString::NewString("a"));
///
/// Ownership: retains what it is given (`Adopt` and `Allocate` take over a reference instead) and releases
/// it.
/// Threads: the holder is for one thread at a time; the object has its own rules.
template <class T>
class VObjectRef {
  public:
    VObjectRef() noexcept = default;
    explicit VObjectRef(T* object) : m_object(object) { RetainHeld(); }
    VObjectRef(VObjectRef const& other) : m_object(other.m_object) { RetainHeld(); }
    VObjectRef(VObjectRef&& other) noexcept : m_object(other.Detach()) {}
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
    static VObjectRef Adopt(T* object) {
        VObjectRef ref;
        ref.m_object = object;
        return ref;
    }

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

    T* Get() const noexcept { return m_object; }
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

} // namespace VFoundation
