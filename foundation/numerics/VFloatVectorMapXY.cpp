#include "foundation/numerics/VFloatVectorMapXY.h"

#include "foundation/core/VException.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cmath>
#include <functional>

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

/// Opens a gap of one element.
void Insert(VFloatVector& vector, float value, long index) {
    long const count = vector.Count();
    vector.SetCount(count + 1);
    float* const elements = vector.Elements();
    std::copy_backward(elements + index, elements + count, elements + count + 1);
    elements[index] = value;
}

void Remove(VFloatVector& vector, long index) {
    float* const elements = vector.Elements();
    std::copy(elements + index + 1, elements + vector.Count(), elements + index);
    vector.SetCount(vector.Count() - 1);
}

} // namespace

VClass* VFloatVectorMapXY::ms_theClass = nullptr;

VFloatVectorMapXY::VFloatVectorMapXY(VClass* cls) : Registered(cls) {
}

VFloatVectorMapXY::VFloatVectorMapXY(VFloatVectorMapXY const& other)
    : Registered(nullptr), m_x(other.m_x), m_y(other.m_y) {
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
    Insert(m_y, y, index);
    try {
        Insert(m_x, x, index);
    } catch (VException const&) {
        Remove(m_y, index);
        throw;
    }
    return true;
}

bool VFloatVectorMapXY::SetPoints(VFloatVector const& x, VFloatVector const& y) {
    if (x.Count() != y.Count() || !IsFinite(x) || !IsFinite(y) || !Ascends(x)) {
        return false;
    }
    m_x = x;
    m_y = y;
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
    RemoveAllPoints();
    VFloatVector x;
    VFloatVector y;
    return x.Serialize(file) && y.Serialize(file) && SetPoints(x, y);
}

bool VFloatVectorMapXY::SerializeAsXML(VXMLFile& file) {
    Registered::SerializeAsXML(file);
    if (!file.IsLoading()) {
        return file.WriteObject("x", m_x) && file.WriteObject("y", m_y);
    }
    RemoveAllPoints();
    VFloatVector x;
    VFloatVector y;
    return file.ReadObject("x", x) && file.ReadObject("y", y) && SetPoints(x, y);
}

} // namespace VFoundation
