#include "foundation/threads/internal/WaitingJobs.h"

#include "foundation/threads/internal/WithoutThrowing.h"

#include <algorithm>
#include <utility>

namespace VFoundation {

namespace {

constexpr long kMostReserved = 65536; // jobs; more are rare, and may not fit into memory

} // namespace

WaitingJobs::WaitingJobs(long capacity) {
    m_jobs.reserve(static_cast<std::size_t>(std::clamp(capacity, 0L, kMostReserved)));
}

WaitingJobs::~WaitingJobs() {
    while (VJob const* const job = TakeFirst().Detach()) {
        WithoutThrowing([job] { job->Release(); });
    }
}

void WaitingJobs::MakeRoom() {
    if (m_jobs.size() < m_jobs.capacity()) {
        return;
    }
    if (m_taken >
        m_jobs.size() / 2) { // instead of growing; while half the slots are free this is cheap over time
        m_jobs.erase(m_jobs.begin(), m_jobs.begin() + static_cast<std::ptrdiff_t>(std::exchange(m_taken, 0)));
    } else {
        m_jobs.reserve(2 * m_jobs.capacity() + 1);
    }
}

void WaitingJobs::Insert(VJob* job, long index) noexcept {
    m_jobs.insert(m_jobs.begin() + static_cast<std::ptrdiff_t>(m_taken) + std::min(index, Count()), job);
}

void WaitingJobs::InsertByPriority(VJob* job) noexcept {
    auto const first = m_jobs.begin() + static_cast<std::ptrdiff_t>(m_taken);
    auto place = m_jobs.end();
    if (place != first &&
        job->Priority() > m_jobs.back()->Priority()) { // else appended, which spares long lists
        place = std::find_if(first, place, [job](VJob* next) { return job->Priority() > next->Priority(); });
    }
    m_jobs.insert(place, job);
}

VObjectRef<VJob> WaitingJobs::TakeFirst() noexcept {
    if (Count() == 0) {
        return {};
    }
    auto job = VObjectRef<VJob>::Adopt(m_jobs[m_taken++]);
    if (Count() == 0) {
        m_jobs.clear();
        m_taken = 0;
    }
    return job;
}

void WaitingJobs::Sort(int (*compare)(VObject const**, VObject const**)) {
    auto const first = m_jobs.begin() + static_cast<std::ptrdiff_t>(m_taken);
    std::stable_sort(first, m_jobs.end(),
                     [compare](VObject const* a, VObject const* b) { return compare(&a, &b) < 0; });
}

} // namespace VFoundation
