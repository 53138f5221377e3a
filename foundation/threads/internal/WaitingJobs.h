#pragma once

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/threads/VJob.h"

namespace VFoundation {

/// The jobs that a server has taken out of its queue, in the order in which they are to run. Taking the first
/// moves the start of the list, not the jobs after it. Internal.
///
/// Ownership: retains the jobs.
/// Threads: one at a time.
class WaitingJobs {
  public:
    explicit WaitingJobs(long capacity) : m_jobs(nullptr, capacity) {}
    WaitingJobs(WaitingJobs const&) = delete;
    WaitingJobs& operator=(WaitingJobs const&) = delete;

    long Count() const { return m_jobs.Count() - m_taken; }
    /// The job (borrowed); null out of range.
    VJob* At(long index) const { return static_cast<VJob*>(m_jobs.ObjectAtIndex(m_taken + index)); }
    /// Moves the jobs from `index` on one place back; an index beyond the end appends.
    /// False, or an exception, when memory runs out.
    bool Insert(VJob* job, long index);
    /// Empty when no job waits.
    VObjectRef<VJob> TakeFirst();
    void Sort(int (*compare)(VObject const**, VObject const**));

  private:
    void CloseGap();

    VObjectArray m_jobs;
    long m_taken = 0; // slots at the front whose job is gone
};

} // namespace VFoundation
