#include "foundation/threads/internal/ThreadPresence.h"
#include "tests/support/Fork.h"
#include "tests/support/Jobs.h"
#include "tests/support/Sleeps.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace VFoundation;
using testing_support::WaitUntil;

/// A thread that works until its gate opens, and then leaves.
struct AWorker {
    AWorker() {
        m_thread = std::thread([this] {
            m_presence.Enter();
            m_presence.ReportUp();
            WaitUntil([this] { return m_gateOpen.load(); });
            m_presence.BeginLeaving();
            WaitUntil([this] { return m_mayLeave.load(); });
            m_gone = true;
            m_presence.Leave();
        });
        EXPECT_TRUE(m_presence.WaitUntilUp(60'000));
    }
    ~AWorker() { m_thread.join(); }

    ThreadPresence m_presence;
    std::atomic<bool> m_gateOpen{false};
    std::atomic<bool> m_mayLeave{true};
    std::atomic<bool> m_gone{false};
    std::thread m_thread;
};

TEST(ThreadPresence, TheEndOfTheLibraryWaitsForThreadsOnTheirWayOut) {
    for (bool const dismissed : {true, false}) {
        AWorker worker;
        worker.m_mayLeave = false;
        if (dismissed) {
            worker.m_presence.Dismiss();
        } else {
            worker.m_gateOpen = true; // leaves by itself, as after `EndThread`
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        auto const await = [&] {
            testing_support::t_sleeps.forever = true; // it is woken
            return ThreadPresence::LibraryEnd().Await(), worker.m_gone.load();
        };
        testing_support::ExpectWaits(await, [&] { worker.m_gateOpen = worker.m_mayLeave = true; });
    }
}

TEST(ThreadPresence, TheEndOfTheLibraryLeavesOtherThreadsAlone) {
    AWorker worker;
    ThreadPresence::LibraryEnd end;
    end.Await();
    EXPECT_FALSE(worker.m_gone);
    worker.m_gateOpen = true;
    WaitUntil([&] { return worker.m_gone.load(); }); // `end` does not hold it up
}

TEST(ThreadPresence, AThreadThatCameTooLateWaitsForTheEndOfTheLibrary) {
    AWorker worker;
    worker.m_presence.Dismiss();
    {
        ThreadPresence::LibraryEnd end;
        end.Await();
        worker.m_gateOpen = true;
        EXPECT_FALSE(worker.m_presence.WaitUntilLeft(50));
        EXPECT_FALSE(worker.m_gone);
        end.Await(); // has given it up
    }
    EXPECT_TRUE(worker.m_presence.WaitUntilLeft(60'000));
}

TEST(ThreadPresence, TheThreadThatForksIsThereInTheChild) {
    ThreadPresence own;
    own.Enter();
    testing_support::InChild([&] { EXPECT_FALSE(own.HasLeft()); });
}

} // namespace
