#include "foundation/numerics/VFloatVectorMapXY.h"

#include "foundation/persistence/IAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace VFoundation {

namespace {

bool IsFinite(VFloatVector const& vector) noexcept {
    return std::all_of(vector.Elements(), vector.Elements() + vector.Count(),
                       [](float element) { return std::isfinite(element); });
}

bool Ascends(VFloatVector const& vector) noexcept {
    float const* const end = vector.Elements() + vector.Count();
    return std::adjacent_find(vector.Elements(), end, std::greater_equal<>()) == end;
}

/// Inserts into a vector whose last element is free.
void Insert(VFloatVector& vector, float value, long index) {
    float* const elements = vector.Elements();
    float* const last = elements + vector.Count() - 1;
    std::copy_backward(elements + index, last, last + 1);
    elements[index] = value;
}

} // namespace

VClass* VFloatVectorMapXY::ms_theClass = nullptr;

VFloatVectorMapXY::VFloatVectorMapXY(VClass* cls) : Registered(cls) {
}

VFloatVectorMapXY::VFloatVectorMapXY(VFloatVectorMapXY const& other)
    : Registered(nullptr), m_x(other.m_x), m_y(other.m_y) {
}

VFloatVectorMapXY& VFloatVectorMapXY::operator=(VFloatVectorMapXY const& other) {
    SetPoints(other.m_x, other.m_y);
    return *this;
}

VFloatVectorMapXY::VFloatVectorMapXY(VFloatVectorMapXY&& other) noexcept
    : Registered(LoadClassSlot(ms_theClass)), m_x(std::move(other.m_x)), m_y(std::move(other.m_y)) {
}

VFloatVectorMapXY& VFloatVectorMapXY::operator=(VFloatVectorMapXY&& other) noexcept {
    m_x = std::move(other.m_x);
    m_y = std::move(other.m_y);
    return *this;
}

VFloatVectorMapXY::~VFloatVectorMapXY() = default;

VFloatVectorMapXY* VFloatVectorMapXY::New() {
    return new VFloatVectorMapXY;
}

VFloatVectorMapXY* VFloatVectorMapXY::Copy() const {
    return new VFloatVectorMapXY(*this);
}

bool VFloatVectorMapXY::IsEqual(VObject const& other) const {
    if (other.Class() != Class()) {
        return false;
    }
    auto const& map = static_cast<VFloatVectorMapXY const&>(other);
    return m_x.IsEqual(map.m_x) && m_y.IsEqual(map.m_y);
}

void VFloatVectorMapXY::GetDescription(VString& out) const {
    out.Format("[%s] Count: %li", ClassName(), Count());
}

// Points

bool VFloatVectorMapXY::AddPoint(float x, float y) {
    if (!std::isfinite(x) || !std::isfinite(y)) {
        return false;
    }
    float const* const begin = m_x.Elements();
    long const index = std::lower_bound(begin, begin + Count(), x) - begin;
    if (index < Count() && begin[index] == x) {
        m_y.SetElementAtIndex(y, index);
        return true;
    }
    long const count = Count();
    m_y.SetCount(count + 1);
    try {
        m_x.SetCount(count + 1);
    } catch (...) {
        m_y.SetCount(count);
        throw;
    }
    Insert(m_x, x, index);
    Insert(m_y, y, index);
    return true;
}

bool VFloatVectorMapXY::SetPoints(VFloatVector const& x, VFloatVector const& y) {
    if (x.Count() != y.Count() || !IsFinite(x) || !IsFinite(y) || !Ascends(x)) {
        return false;
    }
    VFloatVector newX(x);
    VFloatVector newY(y);
    m_x.Swap(newX);
    m_y.Swap(newY);
    return true;
}

void VFloatVectorMapXY::RemoveAllPoints() {
    m_x.SetCount(0);
    m_y.SetCount(0);
}

float VFloatVectorMapXY::ValueAt(float x) const noexcept {
    long const count = Count();
    if (count == 0 || std::isnan(x)) {
        return count == 0 ? 0.0F : x;
    }
    float const* const begin = m_x.Elements();
    float const* const values = m_y.Elements();
    long const above = std::upper_bound(begin, begin + count, x) - begin;
    if (above == 0 || above == count) {
        return values[above == 0 ? 0 : count - 1];
    }
    double const from = begin[above - 1];
    double const share = (double{x} - from) / (double{begin[above]} - from);
    return static_cast<float>(std::lerp(double{values[above - 1]}, double{values[above]}, share));
}

void VFloatVectorMapXY::Apply(VFloatVector& values) const noexcept {
    std::transform(values.Elements(), values.Elements() + values.Count(), values.Elements(),
                   [this](float x) { return ValueAt(x); });
}

// Persistence

bool VFloatVectorMapXY::Serialize(IAIFile& file) {
    if (!file.IsLoading()) {
        return m_x.Serialize(file) && m_y.Serialize(file);
    }
    VFloatVector x;
    VFloatVector y;
    return SetOrClear(x.Serialize(file) && y.Serialize(file), x, y);
}

bool VFloatVectorMapXY::SerializeAsXML(VXMLFile& file) {
    Registered::SerializeAsXML(file);
    if (!file.IsLoading()) {
        return file.WriteObject("x", m_x) && file.WriteObject("y", m_y);
    }
    VFloatVector x;
    VFloatVector y;
    return SetOrClear(file.ReadObject("x", x) && file.ReadObject("y", y), x, y);
}

bool VFloatVectorMapXY::SetOrClear(bool isRead, VFloatVector const& x, VFloatVector const& y) {
    bool const isSet = isRead && SetPoints(x, y);
    if (!isSet) {
        RemoveAllPoints();
    }
    return isSet;
}

} // namespace VFoundation
