#include "foundation/core/VMemoryProfiler.h"

#include "foundation/core/internal/ClassOwned.h"

namespace VFoundation {

VClass* VMemoryProfiler::ms_theClass = nullptr;
std::atomic<VMemoryProfiler*> VMemoryProfiler::ms_theProfiler{nullptr};
std::atomic<bool> VMemoryProfiler::ms_bIsShuttingDown{false};

namespace {

/// What the profiler owns is of the root class: its record is the last that the library gives up.
class ProfilerRecord : public VObject {
  public:
    ProfilerRecord() : VObject(nullptr) {}
};

} // namespace

VMemoryProfiler::VMemoryProfiler(VClass* cls)
    : Registered(cls), m_table(std::make_unique<Slot[]>(kSlots)),
      m_memoryUseMap(VObjectRef<VObject>::Adopt(new ProfilerRecord)),
      m_secondObject(VObjectRef<VObject>::Adopt(new ProfilerRecord)) {
}

VMemoryProfiler::~VMemoryProfiler() {
    ms_bIsShuttingDown = true;
}

void VMemoryProfiler::InitializeClass() {
    if (!ms_theProfiler) {
        ms_bIsShuttingDown = false;
        detail::MakeOnce(ms_theProfiler, &New);
    }
}

void VMemoryProfiler::UninitializeClass() {
    detail::ReleaseAndClear(ms_theProfiler);
}

void VMemoryProfiler::DestroyMemoryUseMap() {
    m_memoryUseMap.Exchange(nullptr);
}

} // namespace VFoundation
