#include "foundation/strings/values/VPoint.h"

#include "foundation/strings/values/internal/SavedFields.h"

namespace VFoundation {

struct VPoint::Fields {
    static constexpr std::tuple kAll{SavedField{"x", &VPoint::x}, SavedField{"y", &VPoint::y}};
};

template class TSavedObject<VPoint>;

VClass* VPoint::ms_theClass = nullptr;

} // namespace VFoundation
