#include "foundation/strings/values/VRange.h"

#include "foundation/strings/values/internal/SavedFields.h"

namespace VFoundation {

struct VRange::Fields {
    static constexpr std::tuple kAll{SavedField{"location", &VRange::m_start},
                                     SavedField{"length", &VRange::m_length}};
};

template class TSavedObject<VRange>;

VClass* VRange::ms_theClass = nullptr;

VRange::VRange(VClass* cls, TInterval const& interval) : Registered(cls), TInterval(interval) {
    Normalise();
}

void VRange::Set(std::int32_t location, std::int32_t length) noexcept {
    m_start = location;
    m_length = length;
    Normalise();
}

} // namespace VFoundation
