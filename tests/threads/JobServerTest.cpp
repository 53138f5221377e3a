#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VException.h"
#include "foundation/log/VStopWatch.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/IVJobDelegate.h"
#include "tests/support/Jobs.h"
#include "tests/support/LineLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <thread>

namespace {

using namespace VFoundation;
using testing_support::AJob;
using testing_support::LineLogScope;
using testing_support::ServerScope;
using testing_support::Signal;
using JobRef = VObjectRef<AJob>;

/// Writes down what happens, a letter each.
class Diary : public IVJobDelegate {
  public:
    void JobQueued(VJobServer*, VJob*) override { Note('q'); }
    void JobStarted(VJobServer*, VJob*) override { Note('s'); }
    void JobSucceeded(VJobServer*, VJob*) override { Note('+'); }
    void JobFailed(VJobServer*, VJob*) override { Note('-'); }

    void Note(char what) {
        std::lock_guard const lock(m_lock);
        m_text += what;
    }
    std::string Text() const {
        std::lock_guard const lock(m_lock);
        return m_text;
    }

  private:
    mutable std::mutex m_lock;
    std::string m_text;
};

class JobServer : public testing::Test {
  protected:
    /// Keeps the thread busy until `Open()`.
    void Close(ServerScope const& server) {
        Signal started;
        server.Add(new AJob([this, &started] {
            started.Set();
            m_gate.Wait();
            return true;
        }));
        started.Wait();
    }
    void Open() { m_gate.Set(); }
    /// Until all jobs added before have run.
    static void Finish(ServerScope const& server) {
        Signal done;
        server.Add(new AJob([&] { return done.Set(), true; }, -1000));
        done.Wait();
        while (server->IsServerRunning() && Description(server).find("No active") == std::string::npos) {
            std::this_thread::yield();
        }
    }
    static std::string Description(ServerScope const& server) { return server->Description().CString(); }

    LineLogScope m_log;
    Diary m_diary;
    Signal m_gate;
};

TEST_F(JobServer, RunsJobsByPriorityAndArrival) {
    ServerScope const server(16);
    Close(server);
    for (char const* job = "1a5b5c3d"; *job; job += 2) {
        server.Add(new AJob([this, what = job[1]] { return m_diary.Note(what), true; }, job[0] - '0'));
    }
    Open();
    Finish(server);
    EXPECT_EQ(m_diary.Text(), "bcda");
}

/// The other way round, which needs the hook.
class ABackwardServer : public Registered<ABackwardServer, VJobServer> {
  public:
    static constexpr char const* kClassName = "ABackwardServer";
    static inline VClass* ms_theClass = nullptr;
    static constexpr bool kIsAbstract = true;
    explicit ABackwardServer(Diary* diary)
        : Registered(nullptr, ServerScope::UniqueName(), 16), m_diary(diary) {}
    bool CompareJobs(VJob* a, VJob* b) override {
        if (a->Priority() == 13) {
            throw 13;
        }
        return VJobServer::CompareJobs(b, a);
    }
    void ServerPreDoActiveJob() override { m_diary->Note('<'); }
    void ServerPostDoActiveJob() override { m_diary->Note('>'); }

  private:
    Diary* m_diary;
};

TEST_F(JobServer, AsksItsHooksAndLosesNoJobToOneThatThrows) {
    ServerScope const server(new ABackwardServer(&m_diary));
    Close(server);
    for (char const* job = "5a1b3c"; *job; job += 2) {
        server.Add(new AJob([this, what = job[1]] { return m_diary.Note(what), true; }, job[0] - '0'));
    }
    server.Add(new AJob([this] { return m_diary.Note('d'), true; }, 13));
    server.Add(new AJob([] { return true; }, 100)); // the pass that throws takes a signal along
    Open();
    while (m_diary.Text().find("a>") == std::string::npos) {
        std::this_thread::yield();
    }
    EXPECT_EQ(m_diary.Text(), "<><d><b><c><a>");
    EXPECT_TRUE(m_log->Has("VJobServer::ServerThread - An unrecognised exception occured! (stage:3)\n"));
}

TEST_F(JobServer, TellsTheDelegateAndKeepsTimes) {
    ServerScope const server(4);
    auto const good = JobRef::Adopt(new AJob([&] { return true; }, 0, &m_diary));
    auto const bad = JobRef::Adopt(new AJob([] { return false; }, 0, &m_diary));
    Close(server);
    good->SetUserFlag(true);
    EXPECT_TRUE(server->AddJob(good.Get()));
    EXPECT_TRUE(server->AddJob(bad.Get()));
    EXPECT_TRUE(good->IsQueued());
    EXPECT_FALSE(good->IsActive());
    Open();
    Finish(server);
    EXPECT_EQ(m_diary.Text(), "qqs+s-");
    EXPECT_FALSE(good->IsQueued() || good->UserFlag() || good->IsActive());
    EXPECT_EQ(good->RetainCount(), 1);
    EXPECT_GT(good->QueuedTime(), 0);
    EXPECT_LE(good->QueuedTime(), good->StartTime());
    EXPECT_LE(good->StartTime(), good->EndTime());
    EXPECT_FALSE(server->AddJob(nullptr));
}

TEST_F(JobServer, RefusesWhatFindsNoRoom) {
    ServerScope const server(1);
    Close(server);
    EXPECT_TRUE(server.Add(new AJob([] { return true; })));
    EXPECT_TRUE(server.Add(new AJob([] { return true; })));
    auto const refused = JobRef::Adopt(new AJob([] { return true; }, 0, &m_diary));
    EXPECT_FALSE(server->AddJob(refused.Get()));
    EXPECT_FALSE(refused->IsQueued());
    EXPECT_EQ(refused->RetainCount(), 1);
    EXPECT_EQ(refused->QueuedTime(), 0);
    EXPECT_EQ(m_diary.Text(), "");
    int units = -1;
    sem_t* const semaphore = sem_open(server->Name().CString(), 0);
    ASSERT_EQ(sem_getvalue(semaphore, &units), 0);
    sem_close(semaphore);
    EXPECT_EQ(units, 2);
    Open();
}

TEST_F(JobServer, DescribesItself) {
    ServerScope const server(4);
    EXPECT_EQ(Description(server), "[VJobServer]  Inactive  Queued: 0\n\nNo active Job.\n");
    Close(server);
    VString const title("title");
    auto const job = JobRef::Adopt(new AJob([] { return true; }));
    job->SetDescription(VObjectRef<VString>::Adopt(title.Copy()).Get());
    server->AddJob(job.Get());
    EXPECT_EQ(Description(server), "[VJobServer]  [ACTIVE]  Queued: 1\n\nActive:\n[AJob]");
    EXPECT_STREQ(job->Description().CString(), "[AJob] title");
    Open();
}

TEST_F(JobServer, KillsJobsWithoutHoldingALock) {
    ServerScope const server(8);
    Signal started, aborted;
    auto const running = JobRef::Adopt(new AJob([&] {
        started.Set();
        aborted.Wait();
        return true;
    }));
    running->m_onAbort = [&] {
        server->SortJobArray();
        EXPECT_NE(Description(server).find("Active:"), std::string::npos);
        aborted.Set();
        return true;
    };
    server->AddJob(running.Get());
    started.Wait();
    auto const waiting = JobRef::Adopt(new AJob([this] { return m_diary.Note('!'), true; }));
    server->AddJob(waiting.Get());
    EXPECT_TRUE(server->KillAllJobs());
    EXPECT_EQ(waiting->RetainCount(), 1);
    Finish(server); // its signal, and one that finds no job
    EXPECT_EQ(m_diary.Text(), "");
}

TEST_F(JobServer, StartsOnceAndEndsInEveryState) {
    ServerScope const server(4);
    VStopWatch const watch(true);
    EXPECT_TRUE(server->EndServer(true));
    EXPECT_LT(watch.GetElapsedTime(), 0.1);
    server->ServerLock()->TryLock(-1);
    EXPECT_FALSE(server->StartServer());
    server->ServerLock()->Unlock();
    EXPECT_TRUE(server->StartServer());
    EXPECT_FALSE(server->StartServer());
    EXPECT_TRUE(server->EndServer(true));
    EXPECT_FALSE(server->IsServerRunning());
    EXPECT_EQ(server->RetainCount(), 1); // the thread has let go of it
    EXPECT_TRUE(server->StartServer());
    std::string const name = server->Name().CString();
    EXPECT_TRUE(m_log->Has("[" + name + "] thread STARTED\n"));
    EXPECT_TRUE(m_log->Has("[" + name + "] thread ENDED\n"));
}

TEST_F(JobServer, GivesUpOnAStuckJob) {
    ServerScope const server(4);
    Signal started;
    server.Add(new AJob(
        [&] {
            started.Set();
            m_gate.Wait();
            return true;
        },
        0, &m_diary));
    started.Wait();
    testing::internal::CaptureStderr();
    VStopWatch const watch(true);
    EXPECT_TRUE(server->EndServer(false));
    EXPECT_GE(watch.GetElapsedTime(), 1.1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "VJobServer::EndServer - " +
                                                          std::string(server->Name().CString()) +
                                                          " aborting - thread stuck?\n");
    Open();
    EXPECT_TRUE(server->EndServer(true));
    EXPECT_EQ(m_diary.Text().find_first_of("+-"), std::string::npos); // the job outlasted its server
}

TEST_F(JobServer, GoesOnAfterAnException) {
    ServerScope const server(8);
    auto const first =
        JobRef::Adopt(new AJob([]() -> bool { throw VException(5, nullptr, "x", -1); }, 0, &m_diary));
    server->AddJob(first.Get());
    server.Add(new AJob([]() -> bool { throw 5; }, 0, &m_diary));
    Finish(server);
    EXPECT_FALSE(first->IsActive() || first->IsQueued());
    EXPECT_EQ(first->RetainCount(), 1);
    std::string const name = server->Name().CString();
    for (auto const& line :
         {"VException in server: " + name + " (stage:5)\n", "Exception in server: " + name + " (stage:5)\n",
          std::string("VJobServer::ServerThread - A VException occured! (stage:5)\n"),
          std::string("VJobServer::ServerThread - An unrecognised exception occured! (stage:5)\n")}) {
        EXPECT_TRUE(m_log->Has(line)) << line;
    }
    std::string const text = m_diary.Text();
    EXPECT_EQ(std::count(text.begin(), text.end(), '-'), 2) << text;
}

TEST_F(JobServer, EndsFromItsOwnThread) {
    for (bool const abruptly : {false, true}) {
        ServerScope const server(4);
        server.Add(new AJob([&] {
            VStopWatch const watch(true);
            EXPECT_TRUE(server->EndServer(true));
            EXPECT_LT(watch.GetElapsedTime(), 0.1);
            if (abruptly) {
                VThread::EndThread();
            }
            return true;
        }));
        while (server->RetainCount() > 1) {
            std::this_thread::yield();
        }
        EXPECT_TRUE(server->EndServer(true));
        EXPECT_TRUE(server->StartServer());
    }
}

TEST_F(JobServer, LivesAsLongAsItsThread) {
    auto* const server = new VJobServer(ServerScope::UniqueName(), 4);
    std::string const name = server->Name().CString();
    Signal end;
    server->AddJob(JobRef::Adopt(new AJob([&] {
                       end.Wait();
                       server->EndServer(true);
                       return true;
                   })).Get());
    server->Release();
    EXPECT_TRUE(VJobServer::ms_jobServersArray->IsPtrInArray(server));
    end.Set();
    while (!m_log->Has("VJobServer [DESTRUCTOR]: " + name + "  END\n")) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(m_log->Has("VJobServer [DESTRUCTOR]: " + name + "  START\n"));
    EXPECT_TRUE(m_log->Has("VJobServer [DESTRUCTOR]: " + name + "  Server running: no\n"));
    sem_unlink(name.c_str());
}

// The semaphore belongs to the whole system: units that others left wake the thread for nothing.
TEST_F(JobServer, IsNotMisledBySignalsOfOthers) {
    std::string const name = ServerScope::UniqueName();
    sem_t* const semaphore = sem_open(name.c_str(), O_CREAT, 0600, 5);
    ServerScope const server(new VJobServer(name.c_str(), 4));
    for (char const what : {'a', 'b'}) {
        server.Add(new AJob([this, what] { return m_diary.Note(what), true; }));
        sem_post(semaphore);
    }
    Finish(server);
    EXPECT_EQ(m_diary.Text(), "ab");
    sem_close(semaphore);
}

TEST_F(JobServer, RunsNothingWithoutASemaphore) {
    for (std::string const& name : {std::string("a/b"), std::string(300, 'x'), std::string()}) {
        testing::internal::CaptureStderr();
        ServerScope const server(new VJobServer(name.c_str(), 4));
        EXPECT_NE(testing::internal::GetCapturedStderr().find("Error creating semaphore named " + name),
                  std::string::npos);
        EXPECT_TRUE(server.Add(new AJob([this] { return m_diary.Note('!'), true; })));
        EXPECT_TRUE(server->KillAllJobs());
        EXPECT_TRUE(server->EndServer(true));
    }
    EXPECT_EQ(m_diary.Text(), "");
}

TEST_F(JobServer, MayBeLeftRunningWhenTheProcessEnds) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            VJobServer* const server = new VJobServer(ServerScope::UniqueName(), 4);
            server->AddJob(JobRef::Adopt(new AJob([] { return true; })).Get());
            sem_unlink(server->Name().CString());
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
