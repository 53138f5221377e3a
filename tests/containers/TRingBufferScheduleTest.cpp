#include "foundation/containers/TRingBuffer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <utility>
#include <vector>

// Runs threads on a ring in every order that their atomic operations can take. There are no real threads: for the next
// operation of one, its program is run again from the start with the results that its operations had so far, and is left
// by an exception before the operation after the next. Undoing the operation leads back to try another thread.

namespace {

using namespace VFoundation;

using Number = std::uint64_t;
using Numbers = std::vector<Number>;

class Schedules {
  public:
    /// Its result is what a thread leaves when it is over.
    using Program = std::function<Numbers()>;

    explicit Schedules(std::vector<Program> const& programs) {
        for (Program const& program : programs) {
            m_threads.push_back({program, {}, {}, false});
        }
        s_current = this;
    }
    Schedules(Schedules const&) = delete;
    Schedules& operator=(Schedules const&) = delete;
    ~Schedules() { s_current = nullptr; }

    /// Calls `check` in every state in which all threads are over; what it does to the ring is undone. The result is the
    /// number of orders that lead to such states.
    double Run(std::function<void()> const& check) {
        auto const [known, isNew] = m_orders.try_emplace(State(), 0);
        double& orders = known->second;
        if (!isNew) {
            return orders; // what can follow has been tried
        }
        bool isOver = true;
        for (Thread& thread : m_threads) {
            if (thread.isOver) {
                continue;
            }
            isOver = false;
            std::size_t const results = thread.results.size();
            std::size_t const operations = m_former.size();
            GoOn(thread);
            orders += Run(check);
            thread.isOver = false;
            thread.results.resize(results);
            Undo(operations);
        }
        if (isOver) {
            std::size_t const operations = m_former.size();
            orders = 1;
            check();
            Undo(operations);
        }
        return orders;
    }

    /// What all threads left, one after the other.
    Numbers Left() const {
        Numbers all;
        for (Thread const& thread : m_threads) {
            all.insert(all.end(), thread.left.begin(), thread.left.end());
        }
        return all;
    }

    /// An operation on a word of 64 bits, of the thread that runs or of a check.
    template <class Value, class Operation>
    static Value Do(Value& word, Operation operation) {
        static_assert(sizeof(Value) == sizeof(Number));
        Schedules* const self = s_current;
        if (!self) {
            return operation(word);
        }
        if (!self->m_running) {
            self->m_former.emplace_back(&word, std::bit_cast<Number>(word));
            return operation(word);
        }
        Numbers& results = self->m_running->results;
        if (self->m_replayed == results.size()) {
            if (std::exchange(self->m_hasGoneOn, true)) {
                throw Suspended();
            }
            self->m_words.insert(&word);
            self->m_former.emplace_back(&word, std::bit_cast<Number>(word));
            results.push_back(std::bit_cast<Number>(operation(word)));
        }
        return std::bit_cast<Value>(results[self->m_replayed++]);
    }

  private:
    struct Suspended {};
    struct Thread {
        Program program;
        Numbers results; // of its operations
        Numbers left;
        bool isOver;
    };

    void GoOn(Thread& thread) {
        m_running = &thread;
        m_replayed = 0;
        m_hasGoneOn = false;
        try {
            thread.left = thread.program();
            thread.isOver = true;
        } catch (Suspended const&) {
        }
        m_running = nullptr;
    }

    void Undo(std::size_t operations) {
        for (; m_former.size() > operations; m_former.pop_back()) {
            std::memcpy(m_former.back().first, &m_former.back().second, sizeof(Number));
        }
    }

    Numbers State() const {
        Numbers state{m_words.size()};
        for (void const* word : m_words) {
            std::memcpy(&state.emplace_back(), word, sizeof(Number));
        }
        for (Thread const& thread : m_threads) {
            state.push_back(thread.results.size());
            state.insert(state.end(), thread.results.begin(), thread.results.end());
        }
        return state;
    }

    static inline Schedules* s_current = nullptr;

    std::vector<Thread> m_threads;
    Thread* m_running = nullptr;
    std::size_t m_replayed = 0; // of the results of the thread that runs
    bool m_hasGoneOn = false;
    std::set<void const*> m_words;                  // that were operated on
    std::vector<std::pair<void*, Number>> m_former; // what they held before each operation
    std::map<Numbers, double> m_orders;             // from each state on
};

template <class V>
class Word {
  public:
    Word(V value) : m_value(value) {}
    V load() const {
        return Schedules::Do(m_value, [](V& value) { return value; });
    }
    V operator+=(V delta) {
        return Schedules::Do(m_value, [delta](V& value) { return value += delta; });
    }

  private:
    mutable V m_value;
};

template <class V>
class SlotRef {
  public:
    explicit SlotRef(V& value) : m_value(value) {}
    V load() const {
        return Schedules::Do(m_value, [](V& value) { return value; });
    }
    bool compare_exchange_strong(V& expected, V desired) const {
        V const found = Schedules::Do(m_value, [&](V& value) {
            return value == expected || s_swapsBlindly ? std::exchange(value, desired) : value;
        });
        return std::exchange(expected, found) == found || s_swapsBlindly;
    }

    static inline bool s_swapsBlindly = false;

  private:
    V& m_value;
};

struct Thing {};

/// Counts no references: the ring's own are its filled slots.
struct Borrowed {
    static void Retain(Thing const*) {}
    static void Release(Thing const*) {}
    static char const* ClassName() { return "AThing"; }
};

struct Ring : TRingBuffer<Thing, Borrowed, Word, SlotRef> {
    using TRingBuffer::FreeWord;
    using TRingBuffer::TRingBuffer;
};

class TRingBufferSchedule : public testing::TestWithParam<unsigned long> {
  protected:
    /// Leaves the number of the thing, or 0 when the ring is full.
    Number Push(Number thing) { return m_ring.Push(&m_things[thing]) ? thing : 0; }
    /// Leaves the number of the thing, or 0 when there is none.
    Number Pop() {
        Thing* thing = &m_things[0];
        m_ring.Pop(&thing);
        return static_cast<Number>(thing - m_things);
    }
    /// With all threads over: the things that were pushed are those that were popped and those that still come out, and
    /// the counts are right.
    bool LosesAndDoublesNothing(Numbers pushed, Numbers popped) {
        long const capacity = static_cast<long>(m_ring.Capacity());
        bool isRight = m_ring.UsedCount() + m_ring.FreeWord() == capacity;
        for (long inside = m_ring.UsedCount(); inside > 0; --inside) {
            popped.push_back(Pop());
            isRight = isRight && popped.back() != 0;
        }
        for (Numbers* numbers : {&pushed, &popped}) {
            std::erase(*numbers, 0);
            std::sort(numbers->begin(), numbers->end());
        }
        return isRight && pushed == popped && m_ring.FreeWord() == capacity;
    }

    Thing m_things[3];
    Ring m_ring{GetParam()};
};

TEST_P(TRingBufferSchedule, TwoPushersAndTwoPoppersLoseAndDoubleNothing) {
    Schedules schedules({[this] { return Numbers{Push(1)}; }, [this] { return Numbers{Push(2)}; },
                         [this] { return Numbers{Pop()}; }, [this] { return Numbers{Pop()}; }});
    int wrong = 0;
    double const orders = schedules.Run([&] {
        Numbers const left = schedules.Left();
        std::size_t const stored = (left[0] != 0) + (left[1] != 0);
        wrong += stored < GetParam() || !LosesAndDoublesNothing({left[0], left[1]}, {left[2], left[3]});
    });
    EXPECT_GT(orders, GetParam() == 1 ? 4e4 : 1e8);
    EXPECT_EQ(wrong, 0);
}

TEST_P(TRingBufferSchedule, OneProducerAndOneConsumerKeepTheOrder) {
    Schedules schedules({[this] {
                             return Numbers{Push(1), Push(2)};
                         },
                         [this] {
                             return Numbers{Pop(), Pop()};
                         }});
    int wrong = 0;
    double const orders = schedules.Run([&] {
        Numbers const left = schedules.Left();
        Numbers const pushed{left[0], left[1]};
        Numbers popped{left[2], left[3]};
        wrong += !LosesAndDoublesNothing(pushed, popped);
        std::erase(popped, 0);
        wrong += !std::is_sorted(popped.begin(), popped.end()) || (!popped.empty() && popped[0] != 1);
    });
    EXPECT_GT(orders, GetParam() == 1 ? 70 : 7e3);
    EXPECT_EQ(wrong, 0);
}

TEST_P(TRingBufferSchedule, WouldFindASwapThatDoesNotCompare) {
    Schedules schedules({[this] { return Numbers{Push(1)}; }, [this] { return Numbers{Push(2)}; }});
    SlotRef<Thing*>::s_swapsBlindly = true;
    int wrong = 0;
    schedules.Run([&] { wrong += !LosesAndDoublesNothing(schedules.Left(), {}); });
    SlotRef<Thing*>::s_swapsBlindly = false;
    EXPECT_EQ(wrong > 0, GetParam() > 1) << "the unit alone guards a single slot";
}

INSTANTIATE_TEST_SUITE_P(Capacities, TRingBufferSchedule, testing::Values(1, 2));

} // namespace
