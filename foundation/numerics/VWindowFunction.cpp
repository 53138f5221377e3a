#include "foundation/numerics/VWindowFunction.h"

#include "foundation/numerics/VFloatVector.h"
#include "foundation/persistence/IAIFile.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

namespace VFoundation {

namespace {

/// A window is a sum of cosines: constant - first * cos(t) + second * cos(2t), t from 0 to 2 pi.
struct Cosines {
    char const* name;
    double constant;
    double first;
    double second;
};

/// In the order of the types.
constexpr Cosines kWindows[] = {
    {"rectangular", 1.0, 0.0, 0.0},
    {"Hann", 0.5, 0.5, 0.0},
    {"Hamming", 0.54, 0.46, 0.0},
    {"Blackman", 0.42, 0.5, 0.08},
};
constexpr int kTypes = static_cast<int>(std::size(kWindows));

} // namespace

VClass* VWindowFunction::ms_theClass = nullptr;

VWindowFunction::VWindowFunction(VClass* cls, eType type) : Registered(cls) {
    SetType(type);
}

VWindowFunction::~VWindowFunction() = default;

VWindowFunction* VWindowFunction::New() {
    return new VWindowFunction;
}

VWindowFunction* VWindowFunction::Copy() const {
    return new VWindowFunction(*this);
}

bool VWindowFunction::IsEqual(VObject const& other) const {
    return other.Class() == Class() && static_cast<VWindowFunction const&>(other).m_type == m_type;
}

void VWindowFunction::GetDescription(VString& out) const {
    out.Format("[%s] %s", ClassName(), kWindows[m_type].name);
}

double VWindowFunction::ValueAt(long index, long count) const noexcept {
    if (index < 0 || index >= count) {
        return 0.0;
    }
    if (count == 1) {
        return 1.0;
    }
    // Count from the nearer end, so that both halves agree to the last bit.
    auto const fromEnd = static_cast<double>(std::min(index, count - 1 - index));
    double const t = 2.0 * std::numbers::pi * fromEnd / static_cast<double>(count - 1);
    Cosines const& window = kWindows[m_type];
    double const value = window.constant - window.first * std::cos(t) + window.second * std::cos(2.0 * t);
    return std::max(value, 0.0); // rounding takes the ends of some windows below 0
}

void VWindowFunction::Apply(VFloatVector& samples) const noexcept {
    long const count = samples.Count();
    float* const elements = samples.Elements();
    for (long i = 0, last = count - 1; i <= last; ++i, --last) {
        auto const value = static_cast<float>(ValueAt(i, count));
        elements[i] *= value;
        if (i != last) {
            elements[last] *= value;
        }
    }
}

// Persistence

bool VWindowFunction::SetTypeNumber(int number) noexcept {
    bool const isType = number >= 0 && number < kTypes;
    m_type = isType ? static_cast<eType>(number) : eRectangular;
    return isType;
}

bool VWindowFunction::Serialize(IAIFile& file) {
    int number = m_type;
    if (file.IsLoading()) {
        number = -1;
        file >> number;
        return SetTypeNumber(number);
    }
    file << number;
    return !file.HasLostBytes();
}

bool VWindowFunction::SerializeAsXML(VXMLFile& file) {
    Registered::SerializeAsXML(file);
    char const* names[kTypes];
    std::transform(std::begin(kWindows), std::end(kWindows), names,
                   [](Cosines const& window) { return window.name; });
    int number = file.IsLoading() ? -1 : m_type;
    bool const done = file.SerializeEnumAttribute("type", number, kTypes, names);
    return SetTypeNumber(number) && done;
}

} // namespace VFoundation
