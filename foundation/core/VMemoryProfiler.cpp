#include "foundation/core/VMemoryProfiler.h"

#include <utility>

namespace VFoundation {

VClass* VMemoryProfiler::ms_theClass = nullptr;
VMemoryProfiler* VMemoryProfiler::ms_theProfiler = nullptr;
std::atomic<bool> VMemoryProfiler::ms_bIsShuttingDown{false};

namespace {

/// What the profiler owns is of the root class: its record is the last that the library gives up.
class ProfilerRecord : public VObject {
  public:
    ProfilerRecord() : VObject(nullptr) {}
};

} // namespace

VMemoryProfiler::VMemoryProfiler(VClass* cls)
    : Registered(cls), m_table(new Slot[kSlots]()), m_memoryUseMap(new ProfilerRecord),
      m_secondObject(new ProfilerRecord) {
}

VMemoryProfiler::~VMemoryProfiler() {
    ms_bIsShuttingDown = true;
    delete[] m_table;
    DestroyMemoryUseMap();
    m_secondObject->Release();
}

void VMemoryProfiler::InitializeClass() {
    if (!ms_theProfiler) {
        ms_bIsShuttingDown = false;
        ms_theProfiler = New();
    }
}

void VMemoryProfiler::UninitializeClass() {
    if (VMemoryProfiler* const profiler = std::exchange(ms_theProfiler, nullptr)) {
        profiler->Release();
    }
}

void VMemoryProfiler::DestroyMemoryUseMap() {
    if (VObject* const map = std::exchange(m_memoryUseMap, nullptr)) {
        map->Release();
    }
}

} // namespace VFoundation
