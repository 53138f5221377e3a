#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VClass.h"
#include "foundation/core/VObject.h"

#include <concepts>
#include <initializer_list>
#include <type_traits>
#include <utility>

namespace VFoundation {

/// The record in a class's slot, or null; safe against a record being made on another thread.
inline VClass* LoadClassSlot(VClass*& slot) noexcept {
    // acquire: what was written to the record before it came into its slot
    return std::atomic_ref<VClass*>(slot).load(std::memory_order_acquire);
}

namespace detail {

/// What a class's record is made from.
struct VFOUNDATION_API ClassDefinition {
    char const* name;
    VClass* (*superClass)(); // null for a root class
    VClass::Factory factory;
    VClass::Hook initialize;
    VClass::Hook uninitialize;
    unsigned long size;
    VClass** slot;
    /// A record of that name that another shared object made serves as well.
    bool isSharedByName = false;
};

/// The record of a class, made or entered in the registry again when it has to be, its hook run. What
/// `TheClass()` calls while the class is not ready.
VFOUNDATION_API VClass* ReadyClass(ClassDefinition const& definition);

} // namespace detail

/// The one place where a class is bound to its run-time record. Derive from it, and give the class its name
/// and its slot:
///
///     class VPoint : public Registered<VPoint, VObject> {
///       public:
///         static constexpr char const* kClassName = "VPoint";
///         static VClass* ms_theClass; // VPoint.cpp: VClass* VPoint::ms_theClass = nullptr;
///         explicit VPoint(VClass* cls = nullptr) : Registered(cls) {}
///         static VPoint* New(); // or: static constexpr bool kIsAbstract = true;
///         static void InitializeClass();   // optional,
///         static void UninitializeClass(); // optional; neither is inherited
///     };
///
/// `Registered(cls, args...)` passes the record of the most derived class and `args` to the base's
/// constructor. The slot is a member of the class and not of this template, because a template's statics are
/// duplicated between shared objects. A copied object needs a copy constructor that calls
/// `Registered(nullptr)`.
///
/// A class is unknown until its `TheClass()` has run for the first time, and files that hold objects of it load
/// without them. So an application names its classes once, after it has started the library:
///
///     RegisterClasses<VPoint, VShape>();
///
/// Common mistakes the compiler finds: naming another class as `Derived`, and forgetting the name, the slot or
/// `New()`.
///
/// Threads: `TheClass()` may be called by any thread; see `VClass` for classes that are not ready.
template <class Derived, class Base>
class VFOUNDATION_API Registered : public Base {
    friend Derived;

    template <class... Args>
    explicit Registered(VClass* cls, Args&&... args)
        : Base(cls ? cls : TheClass(), std::forward<Args>(args)...) {}
    Registered(Registered const&) = delete;
    Registered& operator=(Registered const&) = default;

    static VClass* MakeClass();

  public:
    ~Registered() override = default;

    /// The record of `Derived`; made on first use, its superclass's first, and `InitializeClass()` run.
    static VClass* TheClass() {
        VClass* const cls = LoadClassSlot(Derived::ms_theClass);
        return cls && cls->IsReady() ? cls : MakeClass();
    }
};

namespace detail {

/// Compares addresses as template arguments: under its undefined-behaviour sanitizer g++ 12 takes a plain
/// comparison for no constant.
template <auto Pointer>
struct Address {};
template <auto First, auto Second>
constexpr bool kSameAddress = std::is_same_v<Address<First>, Address<Second>>;

/// A hook counts as the class's own only when it is not simply the base's, seen through inheritance.
template <class Derived, class Base>
constexpr VClass::Hook InitializeHook() {
    if constexpr (requires { &Derived::InitializeClass; }) {
        if constexpr (requires { &Base::InitializeClass; }) {
            return kSameAddress<&Derived::InitializeClass, &Base::InitializeClass>
                       ? nullptr
                       : &Derived::InitializeClass;
        } else {
            return &Derived::InitializeClass;
        }
    } else {
        return nullptr;
    }
}

template <class Derived, class Base>
constexpr VClass::Hook UninitializeHook() {
    if constexpr (requires { &Derived::UninitializeClass; }) {
        if constexpr (requires { &Base::UninitializeClass; }) {
            return kSameAddress<&Derived::UninitializeClass, &Base::UninitializeClass>
                       ? nullptr
                       : &Derived::UninitializeClass;
        } else {
            return &Derived::UninitializeClass;
        }
    } else {
        return nullptr;
    }
}

/// `kIsAbstract` is the class's own too: what derives from an abstract class is concrete unless it says
/// otherwise.
template <class Derived, class Base>
constexpr bool IsAbstract() {
    if constexpr (requires { Derived::kIsAbstract; }) {
        if constexpr (requires { Base::kIsAbstract; }) {
            return !kSameAddress<&Derived::kIsAbstract, &Base::kIsAbstract> && Derived::kIsAbstract;
        } else {
            return Derived::kIsAbstract;
        }
    } else {
        return false;
    }
}

template <class Derived, class Base>
constexpr bool DeclaresOwnNew() {
    if constexpr (requires { &Base::New; }) {
        if constexpr (std::is_same_v<decltype(&Derived::New), decltype(&Base::New)>) {
            return !kSameAddress<&Derived::New, &Base::New>;
        }
    }
    return true;
}

/// Calls `Derived::New()` whatever pointer type it returns.
template <class Derived>
VObject* CallNew() {
    return Derived::New();
}

template <class Derived>
concept HasNew = requires {
    { Derived::New() } -> std::convertible_to<VObject*>;
};

template <class Derived, class Base>
constexpr VClass::Factory FactoryOf() {
    if constexpr (IsAbstract<Derived, Base>()) {
        return nullptr;
    } else if constexpr (!HasNew<Derived>) {
        static_assert(HasNew<Derived>, "the class declares neither a public static New() nor kIsAbstract");
        return nullptr;
    } else {
        static_assert(DeclaresOwnNew<Derived, Base>(),
                      "the class declares neither a public static New() nor kIsAbstract");
        return &CallNew<Derived>;
    }
}

/// The record among `classes` that look-up by name does not find, with a line in the log; null when it finds all.
VFOUNDATION_API VClass* ReportLastByName(std::initializer_list<VClass*> classes);

} // namespace detail

template <class Derived, class Base>
VClass* Registered<Derived, Base>::MakeClass() {
    static_assert(!detail::kSameAddress<&Derived::ms_theClass, &Base::ms_theClass>,
                  "the class declares no ms_theClass of its own");
    static_assert(!detail::kSameAddress<&Derived::kClassName, &Base::kClassName>,
                  "the class declares no kClassName of its own");
    return detail::ReadyClass({Derived::kClassName, &Base::TheClass, detail::FactoryOf<Derived, Base>(),
                               detail::InitializeHook<Derived, Base>(),
                               detail::UninitializeHook<Derived, Base>(), sizeof(Derived),
                               &Derived::ms_theClass});
}

/// Makes the records of an application's classes, so that objects of them can be read from files and made by name.
/// Call it after `InitializeLibrary`; a class that is registered already stays as it is.
///
/// Look-up by name does not find the class whose name sorts last of all (`VClass`). When that is one of these, it is
/// the result, and the log gets the line "RegisterClasses - class '<name>' sorts last and is not found by name\n":
/// give the class another name, or map its name to it with `VClass::SetClassSubstitution`. The result is null
/// otherwise.
template <class... Classes>
VClass* RegisterClasses() {
    return detail::ReportLastByName({Classes::TheClass()...});
}

} // namespace VFoundation
