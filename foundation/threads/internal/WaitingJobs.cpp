#include "foundation/threads/internal/WaitingJobs.h"

#include <algorithm>

namespace VFoundation {

bool WaitingJobs::Insert(VJob* job, long index) {
    if (m_jobs.Count() == m_jobs.AllocatedCapacity() && m_taken >= Count()) {
        CloseGap(); // instead of growing; as long as half the slots are free this is cheap over time
    }
    return index >= Count() ? m_jobs.AddObject(job) : m_jobs.InsertObjectAtIndex(job, m_taken + index);
}

VObjectRef<VJob> WaitingJobs::TakeFirst() {
    if (Count() == 0) {
        return {};
    }
    VObject*& slot = m_jobs.GetObjectsMutable()[m_taken++];
    auto job = VObjectRef<VJob>::Adopt(static_cast<VJob*>(slot));
    slot = nullptr;
    if (Count() == 0) {
        m_jobs.RemoveAllObjects();
        m_taken = 0;
    }
    return job;
}

void WaitingJobs::Sort(int (*compare)(VObject const**, VObject const**)) {
    CloseGap();
    m_jobs.SortWithComparisonFn(compare);
}

void WaitingJobs::CloseGap() {
    if (m_taken == 0) {
        return;
    }
    VObject** const slots = m_jobs.GetObjectsMutable();
    std::rotate(slots, slots + m_taken, slots + m_jobs.Count());
    for (; m_taken > 0; --m_taken) {
        m_jobs.RemoveObjectAtIndex(m_jobs.Count() - 1);
    }
}

} // namespace VFoundation
