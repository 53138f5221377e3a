#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VException.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/threads/IVJobDelegate.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Fork.h"
#include "tests/support/Jobs.h"
#include "tests/support/LineLog.h"
#include "tests/support/PrivateSemaphores.h"
#include "tests/support/Sleeps.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <pthread.h>
#include <semaphore.h>
#include <stdexcept>

namespace {

using namespace VFoundation;
using namespace testing_support;
using JobRef = VObjectRef<AJob>;

class VJobServerTest : public testing::Test, public IVJobDelegate {
  protected:
    void JobQueued(VJobServer*, VJob*) override { Note('q'); }
    void JobStarted(VJobServer*, VJob*) override { Note('s'); }
    void JobSucceeded(VJobServer*, VJob*) override { Note('+'); }
    void JobFailed(VJobServer*, VJob*) override { Note('-'); }

    bool Note(char what) {
        std::lock_guard const lock(m_lock);
        m_diary += what;
        return true;
    }
    std::string Diary() {
        std::lock_guard const lock(m_lock);
        return m_diary;
    }
    /// Keeps the thread busy until the gate opens.
    void CloseGate(ServerScope const& server, IVJobDelegate* delegate = nullptr) {
        std::atomic<bool> started{false};
        auto const work = [&] { return started = true, WaitUntil([this] { return m_gateOpen.load(); }); };
        server.Add(new AJob(work, 0, delegate));
        WaitUntil([&] { return started.load(); });
    }
    static std::string StuckText(ServerScope const& server) {
        return std::string("VJobServer::EndServer - ") + server->Name().CString() +
               " aborting - thread stuck?\n";
    }
    static std::string Description(ServerScope const& server) { return server->Description().CString(); }
    /// Until all jobs added before have run.
    static void Finish(ServerScope const& server) {
        std::atomic<bool> done{false};
        server.Add(new AJob([&] { return done = true; }, -1000));
        WaitUntil([&] { return done && Description(server).find("No active") != std::string::npos; });
    }

    LineLogScope m_log;
    std::atomic<bool> m_gateOpen{false};

  private:
    std::mutex m_lock;
    std::string m_diary;
};

TEST_F(VJobServerTest, RunsJobsByPriorityAndTellsOfThem) {
    ServerScope const server(3);
    EXPECT_EQ(Description(server), "[VJobServer]  Inactive  Queued: 0\n\nNo active Job.\n");
    CloseGate(server);
    JobRef jobs[4];
    for (int i = 0; i < 4; ++i) {
        auto const work = [this, i] { return Note("abcd"[i]) && i != 3; };
        jobs[i] = JobRef::Adopt(new AJob(work, "1553"[i], this));
        EXPECT_TRUE(server->AddJob(jobs[i].Get()));
    }
    EXPECT_EQ(Description(server), "[VJobServer]  [ACTIVE]  Queued: 4\n\nActive:\n[AJob]");
    EXPECT_TRUE(jobs[3]->IsQueued());
    auto const refused = JobRef::Adopt(new AJob([] { return true; }, 9, this));
    EXPECT_FALSE(server->AddJob(refused.Get()));
    EXPECT_FALSE(server->AddJob(nullptr));
    EXPECT_FALSE(refused->IsQueued());
    EXPECT_EQ(refused->RetainCount(), 1);
    m_gateOpen = true;
    WaitUntil([&] { return Diary().size() == 16; });
    Finish(server);
    EXPECT_EQ(Diary(), "qqqqsb+sc+sd-sa+");
    EXPECT_FALSE(jobs[0]->IsQueued());
    EXPECT_LT(0, jobs[0]->QueuedTime());
    EXPECT_LE(jobs[0]->QueuedTime(), jobs[0]->StartTime());
    EXPECT_LE(jobs[0]->StartTime(), jobs[0]->EndTime());
}

/// Runs low priorities first, which needs the hook.
struct ABackwardServer : Registered<ABackwardServer, VJobServer> {
    static constexpr char const* kClassName = "ABackwardServer";
    static inline VClass* ms_theClass = nullptr;
    static constexpr bool kIsAbstract = true;
    explicit ABackwardServer(std::function<void(char)> note)
        : Registered(nullptr, UniqueName().c_str(), 16), m_note(std::move(note)) {}
    bool CompareJobs(VJob* a, VJob* b) override {
        return a->Priority() == 13 ? throw 13 : VJobServer::CompareJobs(b, a);
    }
    void ServerPreDoActiveJob() override { m_note('<'); }
    void ServerPostDoActiveJob() override { m_note('>'); }
    std::function<void(char)> m_note;
};

TEST_F(VJobServerTest, AsksItsHooksAndLosesNoJobToOneThatThrows) {
    ServerScope const server(new ABackwardServer([this](char what) { Note(what); }));
    CloseGate(server);
    int const priorities[] = {5, 1,  3,
                              5, 13, 100}; // the pass that throws takes a signal along, so one is left
    for (int i = 0; i < 6; ++i) {
        server.Add(new AJob([this, i] { return Note("abcdef"[i]); }, priorities[i]));
    }
    m_gateOpen = true;
    WaitUntil([&] { return Diary().size() == 17; });
    EXPECT_EQ(Diary(), "<><e><b><c><a><d>");
    EXPECT_TRUE(m_log.Has("VJobServer::ServerThread - An unrecognised exception occured! (stage:3)\n"));
}

TEST_F(VJobServerTest, KillsJobsWithoutHoldingALock) {
    ServerScope const server(8);
    std::atomic<bool> started{false}, aborted{false};
    auto const work = [&] { return started = true, WaitUntil([&] { return aborted.load(); }); };
    auto const running = JobRef::Adopt(new AJob(work));
    running->m_onAbort = [&] { return server->SortJobArray(), aborted = !Description(server).empty(); };
    server->AddJob(running.Get());
    WaitUntil([&] { return started.load(); });
    server.Add(new AJob([this] { return Note('!'); }));
    EXPECT_TRUE(server->KillAllJobs());
    EXPECT_TRUE(aborted);
    Finish(server); // the killed job's signal finds nothing
    EXPECT_EQ(Diary(), "");
}

TEST_F(VJobServerTest, StartsOnceAndEndsInEveryState) {
    int const open = s_openSemaphores;
    long const listed = VJobServer::ms_jobServersArray ? VJobServer::ms_jobServersArray->Count() : 0;
    {
        ServerScope const server(4);
        EXPECT_EQ(VJobServer::ms_jobServersArray->Count(), listed + 1);
        EXPECT_TRUE(server->EndServer(true));
        server->ServerLock()->TryLock(-1);
        EXPECT_FALSE(server->StartServer());
        server->ServerLock()->Unlock();
        EXPECT_TRUE(server->StartServer());
        EXPECT_FALSE(server->StartServer());
        EXPECT_TRUE(server->EndServer(true));
        EXPECT_EQ(server->RetainCount(), 1); // the thread has let go of it
        EXPECT_TRUE(server->StartServer());
        EXPECT_TRUE(m_log.Has("[" + std::string(server->Name().CString()) + "] thread STARTED\n"));
        EXPECT_EQ(s_openSemaphores, open + 1);
        server->ServerLock()->TryLock(-1); // pauses it
        for (int i = 0; i < 3; ++i) {
            server.Add(new AJob([this] { return Note('!'); }));
        }
        VThread::Sleep(100);
        EXPECT_LE(Diary().size(), 1U) << "the pass that was waiting already";
        server->ServerLock()->Unlock();
        Finish(server);
        EXPECT_EQ(Diary(), "!!!");
    }
    EXPECT_EQ(s_openSemaphores, open);
    EXPECT_EQ(VJobServer::ms_jobServersArray->Count(), listed);
}

// The log keeps each thread from its running lock until `EndServer` could have taken it.
TEST_F(VJobServerTest, LosesNoJobToAnEndThatComesBeforeTheThreadIsUp) {
    m_log.OnLine(
        [](std::string const& line) { VThread::Sleep(line.find("STARTED") != std::string::npos ? 50 : 0); });
    ServerScope const server(4);
    for (int i = 0; i < 3; ++i) {
        server.Add(new AJob([this] { return Note('!'); }));
        EXPECT_TRUE(server->EndServer(true));
        EXPECT_FALSE(server->IsServerRunning());
    }
    EXPECT_EQ(Diary(), "!!!");
}

TEST_F(VJobServerTest, StartsWhollyOrNotAtAll) {
    FailEachNew([] {
        long const number = std::exchange(t_failingNew, 0);
        ServerScope const server(4);
        t_failingNew = number;
        bool const started = server->StartServer();
        bool const failed = NewHasFailed();
        if (failed) {
            EXPECT_FALSE(server->IsServerRunning());
        } else {
            EXPECT_TRUE(started);
        }
        EXPECT_EQ(server->StartServer(), failed) << "nothing is left taken";
        WaitUntil([&] { return server->IsServerRunning(); });
        server->EndServer(true);
        EXPECT_EQ(server->RetainCount(), 1);
        return failed;
    });
    pthread_attr_t usual;
    pthread_attr_t impossible;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    pthread_attr_init(&impossible);
    pthread_attr_setstacksize(&impossible, std::size_t{1} << 47);
    ServerScope const server(4);
    ASSERT_EQ(pthread_setattr_default_np(&impossible), 0);
    long const sleeps = t_sleeps.count;
    EXPECT_TRUE(server->StartServer()) << "an attempt was made";
    EXPECT_EQ(t_sleeps.count, sleeps) << "there is no thread to wait for";
    pthread_setattr_default_np(&usual);
    pthread_attr_destroy(&impossible);
    pthread_attr_destroy(&usual);
    EXPECT_FALSE(server->IsServerRunning());
    EXPECT_TRUE(m_log.Has("Error starting thread: " + std::to_string(EAGAIN) + "\n"));
    EXPECT_EQ(server->RetainCount(), 1);
    EXPECT_TRUE(server->StartServer());
    EXPECT_TRUE(server->IsServerRunning());
}

TEST_F(VJobServerTest, GivesUpOnAStuckJob) {
    ServerScope const server(4);
    CloseGate(server, this);
    testing::internal::CaptureStderr();
    long const sleeps = t_sleeps.count;
    EXPECT_TRUE(server->EndServer(false));
    EXPECT_GE(t_sleeps.count, sleeps + 11) << "for 100 ms each";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), StuckText(server));
    m_gateOpen = true;
    EXPECT_TRUE(server->EndServer(true));
    EXPECT_EQ(Diary().find_first_of("+-"), std::string::npos); // the job outlasted its server
}

TEST_F(VJobServerTest, GoesOnAfterAnExceptionAlsoOfTheLog) {
    m_log.OnLine([](std::string const& line) {
        if (line.find("server") != std::string::npos || line.find("thread") != std::string::npos) {
            throw std::runtime_error("disk full");
        }
    });
    ServerScope const server(8);
    server->SetOnFirstFailure([&](VJob*) { throw Note('1'); });
    CloseGate(server);
    server.Add(new AJob([]() -> bool { throw VException(5, nullptr, "x", -1); }, 0, this));
    server.Add(new AJob([]() -> bool { throw 5; }, 0, this));
    m_gateOpen = true;
    Finish(server);
    EXPECT_EQ(Diary(), "qqs1-s-");
    EXPECT_EQ(server->FailedJobs(), 2);
    std::string const name = server->Name().CString();
    EXPECT_TRUE(m_log.Has("VException in server: " + name + " (stage:5)\n"));
    EXPECT_TRUE(m_log.Has("Exception in server: " + name + " (stage:5)\n"));
    server->EndServer(true);
    EXPECT_TRUE(m_log.Has("[" + name + "] thread ENDED\n"));
}

// Released while it runs, and then ended by a job, which may end the thread itself as well.
TEST_F(VJobServerTest, LivesAsLongAsItsThread) {
    for (bool const abruptly : {false, true}) {
        std::string const name = UniqueName();
        auto* const server = new VJobServer(name.c_str(), 4);
        std::atomic<bool> released{false};
        server->AddJob(JobRef::Adopt(new AJob([&] {
                           WaitUntil([&] { return released.load(); });
                           server->RequestEnd();
                           return abruptly ? VThread::EndThread(), true : true;
                       })).Get());
        server->Release();
        EXPECT_TRUE(VJobServer::ms_jobServersArray->IsPtrInArray(server));
        released = true;
        WaitUntil([&] { return m_log.Has("VJobServer [DESTRUCTOR]: " + name + "  END\n"); });
        EXPECT_TRUE(m_log.Has("VJobServer [DESTRUCTOR]: " + name + "  Server running: no\n"));
    }
}

TEST_F(VJobServerTest, StartsAnotherThreadWhenAJobHasEndedItsOwn) {
    ServerScope const server(4);
    server.Add(new AJob([] { return VThread::EndThread(), true; }));
    WaitUntil([&] { return !server->IsServerRunning(); }); // it may still be on its way out
    server.Add(new AJob([this] { return Note('!'); }));
    Finish(server);
    CloseGate(server);
    server.Add(new AJob([] { return VThread::EndThread(), true; }));
    server.Add(new AJob([this] { return Note('?'); }));
    m_gateOpen = true;
    WaitUntil([&] { return Diary().size() == 2; });
    EXPECT_EQ(Diary(), "!?");
}

TEST_F(VJobServerTest, CannotWaitForTheThreadThatEndsIt) {
    ServerScope const server(4);
    testing::internal::CaptureStderr();
    std::atomic<bool> ended{false};
    server.Add(new AJob([&] { return ended = server->EndServer(true); }));
    WaitUntil([&] { return ended.load(); });
    EXPECT_EQ(testing::internal::GetCapturedStderr(), StuckText(server));
    server->EndServer(true);
    EXPECT_EQ(server->RetainCount(), 1);
}

// The thread is in a job, or between two.
TEST_F(VJobServerTest, IsNotRunningInAChildProcessAndStartsAgain) {
    for (bool const inJob : {true, false}) {
        ServerScope const server(4);
        inJob ? CloseGate(server) : static_cast<void>(server->StartServer());
        WaitUntil(
            [&] { return m_log.Has("[" + std::string(server->Name().CString()) + "] thread STARTED\n"); });
        InChild([&] {
            EXPECT_FALSE(server->IsServerRunning());
            EXPECT_EQ(server->RetainCount(), 1);
            EXPECT_EQ(Description(server), "[VJobServer]  Inactive  Queued: 0\n\nNo active Job.\n");
            EXPECT_TRUE(server->EndServer(true));
            if (!inJob) {
                return; // the parent's thread waits on the same semaphore and would take signals meant for the child's
            }
            EXPECT_TRUE(server->StartServer());
            server.Add(new AJob([this] { return Note('c'); }));
            Finish(server);
            EXPECT_EQ(Diary(), "c");
            EXPECT_TRUE(server->EndServer(true));
            EXPECT_EQ(server->RetainCount(), 1);
        });
        EXPECT_TRUE(server->IsServerRunning());
        m_gateOpen = true;
    }
}

// The semaphore belongs to the whole system: units that others left wake the thread for nothing.
TEST_F(VJobServerTest, IsNotMisledBySignalsOfOthers) {
    std::string const name = UniqueName();
    sem_close(sem_open(name.c_str(), O_CREAT, 0600, 5));
    ServerScope const server(new VJobServer(name.c_str(), 4));
    server.Add(new AJob([this] { return Note('a'); }));
    server.Add(new AJob([this] { return Note('b'); }));
    Finish(server);
    EXPECT_EQ(Diary(), "ab");
}

TEST_F(VJobServerTest, RunsNothingWithoutASemaphore) {
    ServerScope const server(new VJobServer("a/b", 4));
    EXPECT_TRUE(server.Add(new AJob([this] { return Note('!'); })));
    EXPECT_TRUE(server->KillAllJobs());
    EXPECT_TRUE(server->EndServer(true));
    EXPECT_EQ(Diary(), "");
}

TEST(VJobServer, TheEndOfTheLibraryWaitsForItWhenItsJobHasEndedIt) {
    InitializeLibrary(false);
    std::atomic<bool> ending{false};
    std::atomic<bool> gone{false};
    auto server = VObjectRef<VJobServer>::Adopt(new VJobServer(UniqueName().c_str(), 4));
    std::shared_ptr<void> mark(nullptr, [&](void*) { gone = true; }); // dies with the job
    server->AddJob(JobRef::Adopt(new AJob([&, server = server.Get(), mark = std::move(mark)] {
                       server->RequestEnd();
                       ending = true;
                       VThread::Sleep(50);
                       return true;
                   })).Get());
    WaitUntil([&] { return ending.load(); });
    server.Exchange(nullptr);
    UninitializeLibrary(true, false, true);
    EXPECT_TRUE(gone);
}

TEST_F(VJobServerTest, MayBeLeftRunningWhenTheProcessEnds) {
    InChild([] {
        ASSERT_TRUE((new VJobServer(UniqueName().c_str(), 4))->StartServer());
        std::exit(0);
    });
}

} // namespace
