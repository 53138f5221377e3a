#include "foundation/strings/values/VColour.h"

#include "foundation/core/Mutex.h"
#include "foundation/core/VException.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/core/internal/CopyByAssignment.h"
#include "foundation/persistence/VXMLFile.h"

#include <utility>

namespace VFoundation {

namespace {

struct Row {
    char const* name;
    int red, green, blue, alpha;
};

#define VFOUNDATION_ROW(accessor, name, r, g, b, a) {name, r, g, b, a},
constexpr Row kRows[] = {VFOUNDATION_NAMED_COLOURS(VFOUNDATION_ROW)};
#undef VFOUNDATION_ROW

/// Guards the named colours and their array.
constinit detail::Mutex s_lock;

} // namespace

VClass* VColour::ms_theClass = nullptr;
VObjectArrayTmpl<VColour>* VColour::ms_namedColoursArray = nullptr;
constinit std::atomic<VColour*> VColour::ms_namedColours[kNamedCount] = {};
char const* const VColour::ms_pchRedTag = "red";
char const* const VColour::ms_pchGreenTag = "green";
char const* const VColour::ms_pchBlueTag = "blue";
char const* const VColour::ms_pchAlphaTag = "alpha";

VColour::VColour(VClass* cls, SColour const& colour, char const* name) : Registered(cls), SColour(colour) {
    if (name) {
        SetName(name);
    }
}

VColour::VColour(VColour const& other) : VColour(nullptr, other, other.m_name ? other.GetName() : nullptr) {
}

// Making the record could throw; it is there, as `other` is.
VColour::VColour(VColour&& other) noexcept
    : Registered(LoadClassSlot(ms_theClass)), SColour(other), m_name(std::move(other.m_name)) {
}

VColour::~VColour() = default;

VColour& VColour::operator=(VColour const& other) {
    if (this != &other) {
        if (m_name || other.m_name) {
            SetName(other.GetName()); // first, because it may throw
        }
        SColour::operator=(other);
    }
    return *this;
}

VColour& VColour::operator=(VColour&& other) noexcept {
    if (this != &other) {
        SColour::operator=(other);
        m_name = std::move(other.m_name);
    }
    return *this;
}

VColour* VColour::Copy() const {
    return detail::CopyByAssignment(*this);
}

void VColour::SetName(char const* name) {
    if (!m_name) {
        m_name.Allocate();
    }
    *m_name = name;
}

char const* VColour::GetName() const noexcept {
    return m_name ? m_name->CString() : "";
}

bool VColour::IsEqual(VObject const& other) const {
    return other.Class() == Class() && IsSameColour(static_cast<VColour const&>(other));
}

bool VColour::SerializeAsXML(VXMLFile& file) {
    constexpr char const* kColourKey = "colour";
    if (!VObject::SerializeAsXML(file)) {
        VString const text = GetColourAsString(eTagged);
        return !text.IsEmpty() && file.WriteAttribute(kColourKey, text);
    }
    if (VString text; file.ReadAttribute(kColourKey, text)) {
        SetColourFromString(text);
        return true;
    }
    bool const hasRed = file.ReadAttribute(ms_pchRedTag, red);
    bool const hasGreen = file.ReadAttribute(ms_pchGreenTag, green);
    bool const hasBlue = file.ReadAttribute(ms_pchBlueTag, blue);
    bool const hasAlpha = file.ReadAttribute(ms_pchAlphaTag, alpha);
    iSetRGBA(red, green, blue, alpha);
    return hasRed || hasGreen || hasBlue || hasAlpha;
}

VColour* VColour::GetColourNamed(char const* name) {
    if (!name) {
        return nullptr;
    }
    detail::MutexLock const lock(s_lock);
    long const count = ms_namedColoursArray ? ms_namedColoursArray->Count() : 0;
    for (long i = 0; i < count; ++i) {
        VColour* const colour = ms_namedColoursArray->ObjectAtIndexTyped(i);
        if (colour && *colour->GetName() && VString::stricmp(colour->GetName(), name) == 0) {
            return colour;
        }
    }
    return nullptr;
}

VColour* VColour::Named(eNamed which) {
    if (which < 0 || which >= kNamedCount) {
        return nullptr;
    }
    if (VColour* const colour = ms_namedColours[which].load(std::memory_order_acquire)) {
        return colour;
    }
    // Made outside the lock, because that may make class records, which takes locks of its own.
    Row const& row = kRows[which];
    auto made = VObjectRef<VColour>::Adopt(new VColour(row.red, row.green, row.blue, row.alpha, row.name));
    detail::MutexLock lock(s_lock);
    if (VColour* const colour = ms_namedColours[which].load(std::memory_order_relaxed)) {
        return colour; // another thread was first
    }
    bool const hasName = *made->GetName() != '\0'; // not when memory ran out
    if (!hasName || (ms_namedColoursArray && !ms_namedColoursArray->AddObject(made.Get()))) {
        lock.Unlock(); // an exception is logged, by any log
        throw VException(VException::eOutOfMemory, nullptr, "Error making a named colour", -1);
    }
    VColour* const colour = made.Detach();
    ms_namedColours[which].store(colour, std::memory_order_release);
    return colour;
}

void VColour::InitAllNamedColours() {
    for (int i = 0; i < kNamedCount; ++i) {
        Named(static_cast<eNamed>(i));
    }
}

void VColour::ReleaseAllStaticColours() {
    detail::MutexLock const lock(s_lock);
    for (auto& slot : ms_namedColours) {
        detail::ReleaseAndClear(slot);
    }
}

void VColour::InitializeClass() {
    UninitializeArray();
    auto* const array = new VObjectArrayTmpl<VColour>(kNamedCount);
    detail::MutexLock const lock(s_lock);
    ms_namedColoursArray = array;
}

void VColour::UninitializeClass() {
    ReleaseAllStaticColours();
    UninitializeArray();
}

void VColour::UninitializeArray() {
    VObjectArrayTmpl<VColour>* array = nullptr;
    {
        detail::MutexLock const lock(s_lock);
        array = std::exchange(ms_namedColoursArray, nullptr);
    }
    if (array) {
        array->Release();
    }
}

} // namespace VFoundation
