#pragma once

#include "foundation/persistence/IAIFile.h"
#include "foundation/strings/TSavedObject.h"
#include "foundation/strings/VString.h"

#include <charconv>
#include <tuple>

namespace VFoundation {

/// One saved member. The source file of a class on `TSavedObject` holds the list of them, in the order of the
/// chunked file, and makes the code from it:
///
///     struct VDate::Fields {
///         static constexpr std::tuple kAll{SavedField{"seconds", &VDate::m_seconds}};
///     };
///     template class TSavedObject<VDate>;
template <class Owner, class T>
struct SavedField {
    char const* name;
    T Owner::*member;
};
template <class Owner, class T>
SavedField(char const*, T Owner::*) -> SavedField<Owner, T>;

template <class Number>
void AppendValue(VString& text, Number value) {
    char buffer[32] = {};
    std::to_chars(buffer, buffer + sizeof buffer - 1, value);
    text.Append(buffer);
}
inline void AppendValue(VString& text, VString const& value) {
    text.Append(value.CString());
}

template <class Derived>
VObject* TSavedObject<Derived>::Copy() const {
    VObject* const copy = VObject::Copy();
    if (copy) {
        static_cast<Derived&>(*copy) = static_cast<Derived const&>(*this);
    }
    return copy;
}

template <class Derived>
bool TSavedObject<Derived>::IsEqual(VObject const& other) const {
    auto const isSame = [&](auto const&... field) {
        auto const& mine = static_cast<Derived const&>(*this);
        auto const& theirs = static_cast<Derived const&>(other);
        return ((mine.*field.member == theirs.*field.member) && ...);
    };
    return other.Class() == Class() && std::apply(isSame, Derived::Fields::kAll);
}

template <class Derived>
void TSavedObject<Derived>::GetDescription(VString& out) const {
    out.Format("[%s]", ClassName());
    char const* separator = " ";
    auto const append = [&](auto const& field) {
        out << separator << field.name << ": ";
        AppendValue(out, static_cast<Derived const&>(*this).*field.member);
        separator = ", ";
    };
    std::apply([&](auto const&... field) { (append(field), ...); }, Derived::Fields::kAll);
}

template <class Derived>
bool TSavedObject<Derived>::Serialize(IAIFile& file) {
    auto& self = static_cast<Derived&>(*this);
    if (file.IsLoading()) {
        std::apply([&](auto const&... field) { (file >> ... >> (self.*field.member)); },
                   Derived::Fields::kAll);
        MembersLoaded();
    } else {
        std::apply([&](auto const&... field) { (file << ... << (self.*field.member)); },
                   Derived::Fields::kAll);
    }
    return true;
}

} // namespace VFoundation
