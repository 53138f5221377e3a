#include "foundation/strings/values/VSize.h"

#include "foundation/strings/values/internal/SavedFields.h"

namespace VFoundation {

struct VSize::Fields {
    static constexpr std::tuple kAll{SavedField{"width", &VSize::width},
                                     SavedField{"height", &VSize::height}};
};

template class TSavedObject<VSize>;

VClass* VSize::ms_theClass = nullptr;

} // namespace VFoundation
