#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/threads/VJob.h"

#include <cstddef>
#include <vector>

namespace VFoundation {

/// The jobs that a server has taken out of its queue, in the order in which they are to run. Taking the first
/// moves the start of the list, not the jobs after it. Internal.
///
/// Not an object array: one that cannot grow throws a `VException`, whose line must not be written under the server's
/// lock.
///
/// Ownership: adopts the jobs.
/// Threads: one at a time.
class WaitingJobs {
  public:
    explicit WaitingJobs(long capacity);
    WaitingJobs(WaitingJobs const&) = delete;
    WaitingJobs& operator=(WaitingJobs const&) = delete;
    ~WaitingJobs();

    long Count() const noexcept { return static_cast<long>(m_jobs.size() - m_taken); }
    /// The job (borrowed); null out of range.
    VJob* At(long index) const noexcept {
        return index >= 0 && index < Count() ? m_jobs[m_taken + static_cast<std::size_t>(index)] : nullptr;
    }

    /// Before each insertion: room for one more job. Throws `std::bad_alloc`.
    void MakeRoom();
    /// Moves the jobs from `index` on one place back; an index beyond the end appends.
    void Insert(VJob* job, long index) noexcept;
    /// After the jobs of the same or a higher priority.
    void InsertByPriority(VJob* job) noexcept;

    /// Empty when no job waits.
    VObjectRef<VJob> TakeFirst() noexcept;
    void Sort(int (*compare)(VObject const**, VObject const**));

  private:
    std::vector<VJob*> m_jobs;
    std::size_t m_taken = 0; // slots at the front whose job is gone
};

} // namespace VFoundation
