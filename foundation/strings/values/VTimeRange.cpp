#include "foundation/strings/values/VTimeRange.h"

#include "foundation/strings/values/internal/SavedFields.h"

namespace VFoundation {

struct VTimeRange::Fields {
    static constexpr std::tuple kAll{SavedField{"start", &VTimeRange::m_start},
                                     SavedField{"duration", &VTimeRange::m_length}};
};

template class TSavedObject<VTimeRange>;

VClass* VTimeRange::ms_theClass = nullptr;

VTimeRange::VTimeRange(VClass* cls, TInterval const& interval) : Registered(cls), TInterval(interval) {
    Normalise();
}

void VTimeRange::Set(double start, double duration) noexcept {
    m_start = start;
    m_length = duration;
    Normalise();
}

} // namespace VFoundation
