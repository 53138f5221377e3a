#include "foundation/strings/values/VRect.h"

#include "foundation/strings/values/internal/SavedFields.h"

namespace VFoundation {

struct VRect::Fields {
    static constexpr std::tuple kAll{SavedField{"left", &VRect::left}, SavedField{"top", &VRect::top},
                                     SavedField{"right", &VRect::right},
                                     SavedField{"bottom", &VRect::bottom}};
};

template class TSavedObject<VRect>;

VClass* VRect::ms_theClass = nullptr;

} // namespace VFoundation
