#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLogFile.h"
#include "tests/log/StuckFile.h"
#include "tests/support/LineLog.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <future>
#include <sched.h>
#include <semaphore.h>
#include <sys/mount.h>
#include <thread>

namespace {

using namespace VFoundation;
using testing_support::LineLogScope;
using testing_support::ScratchFile;
using testing_support::StuckFile;
using Lines = std::vector<std::string>;
using LogFileRef = VObjectRef<VLogFile>;

LogFileRef NewLog(char const* path) {
    return LogFileRef::Adopt(new VLogFile(path, nullptr));
}

std::string Numbered(int number) {
    return "line " + std::to_string(number) + "\n";
}

/// Lines 0 to count - 1.
std::string AllLines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += Numbered(i);
    }
    return text;
}

std::string StandardErrorOf(VLogFile& log, char const* line) {
    testing::internal::CaptureStderr();
    log.AddString(line);
    return testing::internal::GetCapturedStderr();
}

void PostOften(char const* name, int count) {
    sem_t* const semaphore = sem_open(name, O_CREAT, 0777, 0);
    for (int i = 0; i < count; ++i) {
        sem_post(semaphore);
    }
    sem_close(semaphore);
}

/// What follows the date, which is the first line and has no line feed.
std::string BehindTheDate(std::string const& text) {
    std::tm date{};
    char const* const end = ::strptime(text.c_str(), "%a %b %e %H:%M:%S %Y", &date);
    EXPECT_EQ(end, text.c_str() + 24) << text.substr(0, 30);
    return text.substr(24);
}

TEST(LogFile, WritesLinesAsTheyAre) {
    ScratchFile const file;
    file.SetBytes("old");
    auto const log = NewLog(nullptr);
    EXPECT_EQ(StandardErrorOf(*log, "x"), "x\n");
    EXPECT_FALSE(log->Close());
    EXPECT_TRUE(log->Open(file.Path()));
    EXPECT_FALSE(log->Open(file.Path()));
    EXPECT_STREQ(log->FileName(), file.Path());
    log->AddString("a");
    log->AddString(nullptr);
    log->AddString("b%s\n");
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(BehindTheDate(file.Bytes()), "ab%s\n");
    EXPECT_EQ(StandardErrorOf(*log, "y\n"), "y\n");
    EXPECT_EQ(log->FileName(), nullptr);
}

TEST(LogFile, RefusesWhatItCannotOpen) {
    ScratchFile const file;
    auto const log = NewLog("/");
    EXPECT_FALSE(log->Open(nullptr));
    EXPECT_FALSE(log->Open((file.Folder() / "none" / "log").c_str()));
    EXPECT_FALSE(log->Open(std::string(100'000, 'x').c_str()));
    EXPECT_EQ(StandardErrorOf(*log, "x"), "x\n");
    EXPECT_TRUE(log->Open(file.Path()));
}

TEST(LogFile, CutsLongPathsAt259Bytes) {
    ScratchFile const file;
    std::string path = file.Folder().string() + '/';
    path.resize(300, 'x');
    auto const log = NewLog(path.c_str());
    EXPECT_EQ(log->FileName(), path.substr(0, 259));
}

TEST(LogFile, QueuesLinesForItsThread) {
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    for (int round = 0; round < 2; ++round) {
        EXPECT_TRUE(log->StartLoggingThread());
        EXPECT_FALSE(log->StartLoggingThread());
        EXPECT_TRUE(log->IsLoggingThreadRunning());
        for (int i = 0; i < 500; ++i) {
            log->AddString(Numbered(500 * round + i).c_str());
        }
        EXPECT_TRUE(log->ShutdownLoggingThread());
        EXPECT_FALSE(log->IsLoggingThreadRunning());
        EXPECT_EQ(BehindTheDate(file.Bytes()), AllLines(500 * (round + 1))); // before anything is closed
    }
    log->AddString("direct");
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(BehindTheDate(file.Bytes()), AllLines(1000) + "direct");
    EXPECT_EQ(log->DroppedLines(), 0);
}

TEST(LogFile, WritesSoonWhatIsQueued) {
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    log->StartLoggingThread();
    log->AddString("soon\n");
    while (file.Bytes().find("soon") == std::string::npos) {
        std::this_thread::yield();
    }
}

TEST(LogFile, ClosesAndReopensUnderItsThread) {
    ScratchFile const first;
    ScratchFile const second;
    auto const log = NewLog(first.Path());
    log->StartLoggingThread();
    for (int i = 0; i < 1000; ++i) {
        log->AddString(Numbered(i).c_str());
    }
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(BehindTheDate(first.Bytes()), AllLines(1000));
    EXPECT_EQ(StandardErrorOf(*log, "closed\n"), "closed\n");
    EXPECT_TRUE(log->Open(second.Path()));
    log->AddString("again");
    EXPECT_TRUE(log->ShutdownLoggingThread());
    EXPECT_EQ(BehindTheDate(second.Bytes()), "again");
}

TEST(LogFile, TracesEveryStepOfItsShutDown) {
    LineLogScope const traced;
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    EXPECT_TRUE(log->ShutdownLoggingThread());
    Lines lines = traced->Lines();
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[0], "[ ShutdownLoggingThread - START ]\n");
    EXPECT_EQ(lines[1], " Writing thread handle exists?: NO\n");
    EXPECT_EQ(lines[2], " Writing thread is running?     NO\n");
    EXPECT_EQ(lines[3], " Writing thread can continue?   NO\n");
    EXPECT_EQ(lines[4].substr(0, 34), "[ ShutdownLoggingThread - END ] 0.");
    log->StartLoggingThread();
    EXPECT_TRUE(log->ShutdownLoggingThread());
    lines = traced->Lines();
    lines.erase(lines.begin(), lines.begin() + 5);
    ASSERT_EQ(lines.size(), 15u);
    EXPECT_EQ(Lines(lines.begin() + 1, lines.begin() + 14),
              (Lines{" Writing thread handle exists?: YES\n", " Writing thread is running?     YES\n",
                     " Writing thread can continue?   YES\n", " Signalling logging thread to die...\n",
                     " Semaphoring logging thread to die...\n",
                     " Setting logging thread priority to high...\n", " Checking outstanding lines...\n",
                     " Outstanding lines are: 0\n", " waiting for shutdown semaphore...(0/25)\n",
                     " got shutdown semaphore!\n", " Logging thread has been shutdown safely\n",
                     " Unregistering logging thread...\n", " Releasing logging thread...\n"}));
}

TEST(LogFile, StopsItsThreadWhenItDiesAsTheDefaultLog) {
    ScratchFile const file;
    VLog::SetSafeStartup();
    {
        auto const log = NewLog(file.Path());
        log->StartLoggingThread();
        VLog::SetLog(log.Get());
    }
    for (int i = 0; i < 100; ++i) {
        VLog::Trace("line %i\n", i);
    }
    VLog::DestroyDefaultLog();
    std::string const text = BehindTheDate(file.Bytes());
    std::size_t at = 0;
    for (int i = 0; i < 100; ++i) { // the steps of the shut-down may stand between, as they do not queue
        at = text.find(Numbered(i), at);
        ASSERT_NE(at, std::string::npos) << i;
    }
    EXPECT_NE(text.find("Logging thread has been shutdown safely\n"), std::string::npos);
}

TEST(LogFile, IsNotMisledBySignalsOfOthers) {
    ScratchFile const file;
    PostOften("VLogFile", 20);
    PostOften("VLogFileShutdown", 40); // more than the rounds of a shut-down
    auto const log = NewLog(file.Path());
    EXPECT_TRUE(log->StartLoggingThread());
    for (int i = 0; i < 1000; ++i) {
        log->AddString(Numbered(i).c_str());
    }
    EXPECT_TRUE(log->ShutdownLoggingThread());
    EXPECT_EQ(BehindTheDate(file.Bytes()), AllLines(1000));
}

// A writer that waits for the disk: what does not fit is counted, and what was accepted is not lost.
TEST(LogFile, CountsWhatAFullQueueDrops) {
    StuckFile const file;
    auto const log = NewLog(file.Path());
    log->StartLoggingThread();
    int added = 0;
    while (log->DroppedLines() < 10) {
        log->AddString(Numbered(added++).c_str());
    }
    auto text = std::async(std::launch::async, [&] { return file.ReadAll(); });
    EXPECT_TRUE(log->ShutdownLoggingThread());
    EXPECT_TRUE(log->Close());
    std::string const read = BehindTheDate(text.get());
    EXPECT_EQ(std::count(read.begin(), read.end(), '\n') + log->DroppedLines(), added);
    EXPECT_EQ(read.substr(0, AllLines(VLogFile::kQueueCapacity).size()), AllLines(VLogFile::kQueueCapacity));
}

constexpr int kCannotTell = 77;
bool s_couldNotTell = false;

/// The child succeeded, or could not make the world that it was to be tried in.
bool Passed(int status) {
    s_couldNotTell = WIFEXITED(status) && WEXITSTATUS(status) == kCannotTell;
    return s_couldNotTell || testing::ExitedWithCode(0)(status);
}

void LogToItsEnd(bool possible, char const* path) {
    if (!possible) {
        std::_Exit(kCannotTell);
    }
    auto const log = NewLog(path);
    bool const started = log->StartLoggingThread();
    for (int i = 0; i < 1000; ++i) {
        log->AddString(Numbered(i).c_str());
    }
    std::_Exit(started && log->ShutdownLoggingThread() ? 0 : 1);
}

class LogFileAbroad : public testing::Test {
  protected:
    LogFileAbroad() {
        testing::FLAGS_gtest_death_test_style = "threadsafe";
        std::filesystem::permissions(m_file.Folder(), std::filesystem::perms::all);
        RemoveSemaphores();
    }
    ~LogFileAbroad() override { RemoveSemaphores(); }
    static void RemoveSemaphores() {
        sem_unlink("VLogFile");
        sem_unlink("VLogFileShutdown");
    }
    /// The path comes from the parent, as the child runs the test from its start.
    void SetUp() override {
        if (char const* const path = std::getenv("VFOUNDATION_TEST_LOG")) {
            m_path = path;
        } else {
            m_path = m_file.Path();
            ::setenv("VFOUNDATION_TEST_LOG", m_path.c_str(), 1);
        }
    }
    void TearDown() override {
        ::unsetenv("VFOUNDATION_TEST_LOG");
        if (s_couldNotTell) {
            GTEST_SKIP() << "needs to be root";
        }
        EXPECT_EQ(BehindTheDate(m_file.Bytes()), AllLines(1000));
    }

    ScratchFile m_file;
    std::string m_path;
};

bool GiveUpThePrivileges() {
    for (char const* const semaphore : {"/dev/shm/sem.VLogFile", "/dev/shm/sem.VLogFileShutdown"}) {
        std::ofstream{semaphore, std::ios::app};
        ::chmod(semaphore, 0600);
    }
    return ::setuid(65534) == 0;
}

bool HideSharedMemory() {
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("none", "/dev", "tmpfs", 0, nullptr) == 0;
}

TEST_F(LogFileAbroad, WorksWithoutSemaphoresThatBelongToOthers) {
    EXPECT_EXIT(LogToItsEnd(GiveUpThePrivileges(), m_path.c_str()), Passed, "reason: EACCES|^$");
}

TEST_F(LogFileAbroad, WorksWhereTheSystemHasNoSemaphores) {
    EXPECT_EXIT(LogToItsEnd(HideSharedMemory(), m_path.c_str()), Passed, "reason: ENOENT|^$");
}

TEST(LogFile, MayBeLeftOpenWhenTheProcessEnds) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            ScratchFile const file;
            LogFileRef log = NewLog(file.Path());
            log->StartLoggingThread();
            log->AddString("line\n");
            static_cast<void>(log.Detach());
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
