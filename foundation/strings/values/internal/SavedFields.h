#pragma once

#include "foundation/core/internal/CopyByAssignment.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/internal/NumberText.h"
#include "foundation/strings/values/TSavedObject.h"

#include <tuple>
#include <type_traits>

namespace VFoundation {

/// One saved member. The source file of a class on `TSavedObject` lists them, in the order of the chunked file, and
/// instantiates the base:
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

template <class T>
void AppendMember(VString& text, T const& member) {
    if constexpr (std::is_same_v<T, VString>) {
        text.Append(member.CString());
    } else if constexpr (std::is_integral_v<T>) {
        text.Append(NumberText(static_cast<long long>(member)).CString());
    } else {
        text.Append(NumberText(member).CString());
    }
}

template <class T>
bool SerializeMember(VXMLFile& file, char const* name, T& member) {
    return file.SerializeAttribute(name, member);
}
/// Reads the attribute as it is: an empty string is a value, too.
inline bool SerializeMember(VXMLFile& file, char const* name, VString& member) {
    if (file.IsSaving()) {
        return file.WriteAttribute(name, member.CString());
    }
    char const* text = nullptr;
    if (!file.ReadAttribute(name, text)) {
        return false;
    }
    member = text;
    return member == text; // not when memory ran out
}

template <class Derived>
VObject* TSavedObject<Derived>::Copy() const {
    return detail::CopyByAssignment(static_cast<Derived const&>(*this));
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
        AppendMember(out, static_cast<Derived const&>(*this).*field.member);
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

template <class Derived>
bool TSavedObject<Derived>::SerializeAsXML(VXMLFile& file) {
    bool isWhole = true;
    auto const move = [&](auto const& field) {
        isWhole = SerializeMember(file, field.name, static_cast<Derived&>(*this).*field.member) && isWhole;
    };
    bool const isLoading = VObject::SerializeAsXML(file);
    std::apply([&](auto const&... field) { (move(field), ...); }, Derived::Fields::kAll);
    if (isLoading) {
        MembersLoaded();
    }
    return isWhole;
}

} // namespace VFoundation
