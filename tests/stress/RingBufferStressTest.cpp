#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/VObjectRef.h"
#include "tests/support/Counted.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <atomic>
#include <sched.h>
#include <tuple>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

struct ANumbered : ACounted {
    explicit ANumbered(int number) : m_number(number) {}
    int const m_number;
};

struct CountingRing : TRingBuffer<ACounted> {
    using TRingBuffer::FreeWord;
    using TRingBuffer::TRingBuffer;
};

/// Capacity, and threads on each side.
class RingBufferStress : public testing::TestWithParam<std::tuple<unsigned long, int>> {
  protected:
    void Produce(int producer) {
        for (int i = producer; i < m_total; i += m_threads) {
            auto const object = VObjectRef<ANumbered>::Adopt(new ANumbered(i));
            while (!m_ring.Push(object.Get())) {
                sched_yield();
            }
        }
    }
    void Consume() {
        int last = -1;
        while (m_consumed < m_total) {
            ACounted* object = nullptr;
            if (!m_ring.Pop(&object)) {
                sched_yield();
                continue;
            }
            int const number = static_cast<ANumbered const*>(object)->m_number;
            m_inOrder = m_inOrder && number > last;
            last = number;
            ++m_seen[static_cast<std::size_t>(number)];
            object->Release();
            ++m_consumed;
        }
    }

    int const m_threads = std::get<1>(GetParam());
    int const m_total = 20000;
    CountingRing m_ring{std::get<0>(GetParam())};
    std::atomic<int> m_consumed{0};
    std::atomic<bool> m_inOrder{true};
    std::vector<std::atomic<int>> m_seen = std::vector<std::atomic<int>>(static_cast<std::size_t>(m_total));
};

TEST_P(RingBufferStress, DeliversEverythingOnce) {
    testing_support::OnThreads(2 * m_threads, [this](int i) { i < m_threads ? Produce(i) : Consume(); });
    for (auto const& seen : m_seen) {
        ASSERT_EQ(seen, 1);
    }
    EXPECT_EQ(m_ring.UsedCount(), 0);
    EXPECT_EQ(m_ring.FreeWord(), static_cast<int>(m_ring.Capacity()));
    EXPECT_EQ(ACounted::ms_alive, 0);
    if (m_threads == 1) {
        EXPECT_TRUE(m_inOrder);
    }
}

INSTANTIATE_TEST_SUITE_P(Loads, RingBufferStress,
                         testing::Combine(testing::Values(1, 2, 3, 64, 8192), testing::Values(1, 4, 8)));

} // namespace
