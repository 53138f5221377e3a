#include "foundation/log/VLogFile.h"
#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Fork.h"
#include "tests/support/Jobs.h"
#include "tests/support/LineLog.h"
#include "tests/support/PrivateSemaphores.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <functional>
#include <future>
#include <optional>
#include <pthread.h>
#include <semaphore.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>

namespace {
std::time_t s_laterBy = 0;
} // namespace

/// Stands before the system's, so that the next day comes when a test says so.
extern "C" std::time_t time(std::time_t* result) noexcept {
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    std::time_t const time = now.tv_sec + s_laterBy;
    return result ? *result = time : time;
}

namespace {

using namespace VFoundation;
using namespace testing_support;
using Lines = std::vector<std::string>;
using LogFileRef = VObjectRef<VLogFile>;

LogFileRef NewLog(char const* path) {
    return LogFileRef::Adopt(new VLogFile(path, nullptr));
}

/// The lines from `first` to before `end`, which are also added to `log` if there is one.
std::string Numbered(int first, int end, VLogFile* log = nullptr) {
    std::string text;
    for (int i = first; i < end; ++i) {
        std::string const line = "line " + std::to_string(i) + "\n";
        text += line;
        if (log) {
            log->AddString(line.c_str());
        }
    }
    return text;
}

std::string StandardErrorOf(VLogFile& log, char const* line) {
    testing::internal::CaptureStderr();
    log.AddString(line);
    return testing::internal::GetCapturedStderr();
}

/// What follows the date, which is the first line and has no line feed.
std::string AfterTheDate(std::string const& text) {
    std::tm date{};
    char const* const end = ::strptime(text.c_str(), "%a %b %e %H:%M:%S %Y", &date);
    EXPECT_EQ(end, text.c_str() + 24) << text.substr(0, 30);
    return text.substr(24);
}

TEST(VLogFile, WritesLinesAsTheyAre) {
    ScratchFile const file;
    file.SetBytes("old");
    auto const log = NewLog("/");
    EXPECT_EQ(StandardErrorOf(*log, "x"), "x\n");
    EXPECT_FALSE(log->Close());
    EXPECT_FALSE(log->Open(nullptr));
    EXPECT_FALSE(log->Open(std::string(100'000, 'x').c_str()));
    EXPECT_TRUE(log->Open(file.Path()));
    EXPECT_FALSE(log->Open(file.Path()));
    log->AddString("a");
    log->AddString(nullptr);
    log->AddString("b%s\n");
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(AfterTheDate(file.Bytes()), "ab%s\n");
    EXPECT_EQ(StandardErrorOf(*log, "y\n"), "y\n");
    std::string const path = file.Folder().string() + '/' + std::string(300, 'x');
    EXPECT_TRUE(log->Open(path.c_str())); // cut
    EXPECT_EQ(log->FileName(), path.substr(0, 259));
}

TEST(VLogFile, QueuesLinesForItsThread) {
    ScratchFile const first;
    ScratchFile const second;
    auto const log = NewLog(first.Path());
    EXPECT_TRUE(log->StartLoggingThread());
    EXPECT_FALSE(log->StartLoggingThread());
    std::string const lines = Numbered(0, 500, log.Get());
    // The thread does not wait for the end.
    WaitUntil([&] { return first.Bytes().size() >= 24 + lines.size(); });
    std::string const more = lines + Numbered(500, 1500, log.Get());
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(AfterTheDate(first.Bytes()), more);
    EXPECT_EQ(StandardErrorOf(*log, "closed\n"), "closed\n");
    EXPECT_TRUE(log->Open(second.Path()));
    EXPECT_TRUE(log->ShutdownLoggingThread());
    EXPECT_TRUE(log->StartLoggingThread());
    Numbered(0, 1000, log.Get());
    EXPECT_TRUE(log->ShutdownLoggingThread());
    EXPECT_EQ(AfterTheDate(second.Bytes()), Numbered(0, 1000)); // before anything is closed
    log->AddString("direct");
    log->Close();
    EXPECT_EQ(AfterTheDate(second.Bytes()), Numbered(0, 1000) + "direct");
    EXPECT_EQ(log->DroppedLines(), 0);
}

TEST(VLogFile, TracesEveryStepOfItsShutDown) {
    LineLogScope const traced;
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    EXPECT_TRUE(log->ShutdownLoggingThread());
    log->StartLoggingThread();
    EXPECT_TRUE(log->ShutdownLoggingThread());
    Lines lines = traced.Lines();
    ASSERT_EQ(lines.size(), 20U);
    EXPECT_EQ(lines[4].substr(0, 34), "[ ShutdownLoggingThread - END ] 0.");
    EXPECT_EQ(Lines(lines.begin(), lines.begin() + 4),
              (Lines{"[ ShutdownLoggingThread - START ]\n", " Writing thread handle exists?: NO\n",
                     " Writing thread is running?     NO\n", " Writing thread can continue?   NO\n"}));
    EXPECT_EQ(Lines(lines.begin() + 6, lines.begin() + 19),
              (Lines{" Writing thread handle exists?: YES\n", " Writing thread is running?     YES\n",
                     " Writing thread can continue?   YES\n", " Signalling logging thread to die...\n",
                     " Semaphoring logging thread to die...\n",
                     " Setting logging thread priority to high...\n", " Checking outstanding lines...\n",
                     " Outstanding lines are: 0\n", " waiting for shutdown semaphore...(0/25)\n",
                     " got shutdown semaphore!\n", " Logging thread has been shutdown safely\n",
                     " Unregistering logging thread...\n", " Releasing logging thread...\n"}));
}

TEST(VLogFile, StopsItsThreadWhenItDiesAsTheDefaultLog) {
    ScratchFile const file;
    VLog::SetSafeStartup();
    LogFileRef log = NewLog(file.Path());
    log->StartLoggingThread();
    VLog::SetLog(log.Get());
    log.Exchange(nullptr);
    VLog::DestroyDefaultLog();
    EXPECT_NE(file.Bytes().find(" Logging thread has been shutdown safely\n"), std::string::npos);
}

TEST(VLogFile, StopsItsThreadThoughTheDefaultLogThrows) {
    ScratchFile const file;
    LineLogScope const traced;
    traced.OnLine([](std::string const&) { throw 7; });
    LogFileRef log = NewLog(file.Path());
    EXPECT_TRUE(log->StartLoggingThread());
    std::string const lines = Numbered(0, 500, log.Get());
    EXPECT_THROW(log->ShutdownLoggingThread(), int); // its start line
    EXPECT_TRUE(log->IsLoggingThreadRunning());
    log.Exchange(nullptr);
    EXPECT_EQ(AfterTheDate(file.Bytes()), lines);
    traced.OnLine({});
}

TEST(VLogFile, EndsItsShutDownWhereALineThrowsAndSaysAtWhichStage) {
    struct {
        char const* line;
        int stage;
        std::optional<bool> stops; // the thread, before the line; a busy one sees by itself that it is to end
    } const rows[] = {{"handle", 0, false}, {"Signalling", 1, false},   {"Semaphoring", 2, std::nullopt},
                      {"Setting", 3, true}, {"Outstanding", 5, true},   {"waiting", 5, true},
                      {"safely", 8, true},  {"Unregistering", 9, true}, {"Releasing", 10, true}};
    for (auto const& row : rows) {
        SCOPED_TRACE(row.line);
        LineLogScope const traced;
        ScratchFile const file;
        auto const log = NewLog(file.Path());
        EXPECT_TRUE(log->StartLoggingThread());
        std::string const lines = Numbered(0, 100, log.Get());
        traced.OnLine([&](std::string const& line) {
            if (line.find(row.line) != std::string::npos) {
                WaitUntil([&] { return !row.stops.value_or(false) || !log->IsLoggingThreadRunning(); });
                throw 7;
            }
        });
        bool const stopped = log->ShutdownLoggingThread();
        EXPECT_EQ(stopped, row.stops.value_or(stopped));
        EXPECT_TRUE(traced.Has(
            " Exception caught shutting down logging thread, stage: " + std::to_string(row.stage) + "\n"));
        traced.OnLine({});
        EXPECT_TRUE(log->ShutdownLoggingThread());
        EXPECT_TRUE(log->StartLoggingThread()) << "nothing is left behind";
        EXPECT_TRUE(log->Close());
        EXPECT_EQ(AfterTheDate(file.Bytes()), lines);
    }
}

// As if a user of the library had not known whose thread it is.
TEST(VLogFile, SurvivesThatItsThreadIsCancelled) {
    VThread::InitializeClass();
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    EXPECT_TRUE(log->StartLoggingThread());
    pthread_cancel(static_cast<VThread*>(VThread::ms_threads->ObjectAtIndex(0))->ID());
    std::string lines;
    for (int i = 0; log->IsLoggingThreadRunning(); ++i) { // it ends where it writes
        lines += Numbered(i, i + 1, log.Get());
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    log->AddString("direct\n");
    bool isStarted = false; // once the cancelled thread is gone
    WaitUntil([&] { return isStarted = isStarted || log->StartLoggingThread(); });
    EXPECT_TRUE(log->ShutdownLoggingThread());
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(AfterTheDate(file.Bytes()), lines + "direct\n");
    EXPECT_EQ(log->DroppedLines(), 0);
    VThread::UninitializeClass();
}

TEST(VLogFile, OpensAsAWholeOrNotAtAll) {
    struct ALogFile : VLogFile {
        ALogFile() : VLogFile(nullptr) {}
        void AddString(char const* line) override { m_throws ? throw 7 : VLogFile::AddString(line); }
        bool m_throws = true;
    };
    ScratchFile const file;
    auto const log = VObjectRef<ALogFile>::Adopt(new ALogFile);
    EXPECT_THROW(log->Open(file.Path()), int);
    EXPECT_EQ(log->FileName(), nullptr);
    EXPECT_FALSE(log->Close());
    log->m_throws = false;
    EXPECT_TRUE(log->Open(file.Path()));
}

TEST(VLogFile, StartsItsThreadAsAWholeOrNotAtAll) {
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    EXPECT_TRUE(log->StartLoggingThread()); // all that is made once
    EXPECT_TRUE(log->ShutdownLoggingThread());
    FailEachNew([&] {
        bool started = false;
        try {
            started = log->StartLoggingThread();
        } catch (std::bad_alloc const&) {
        }
        bool const failed = NewHasFailed();
        EXPECT_EQ(log->IsLoggingThreadRunning(), started);
        EXPECT_EQ(log->StartLoggingThread(), !started);
        EXPECT_TRUE(log->ShutdownLoggingThread());
        return failed;
    });
    std::size_t const before = file.Bytes().size();
    EXPECT_TRUE(log->StartLoggingThread());
    VString::ms_bRecyclingEnabled = false;
    FailEachNew([&] {
        log->AddString("y");
        return NewHasFailed();
    });
    VString::ms_bRecyclingEnabled = true;
    EXPECT_TRUE(log->ShutdownLoggingThread());
    EXPECT_EQ(log->DroppedLines(), 1); // the other one found memory
    EXPECT_EQ(file.Bytes().size(), before + 1);
}

TEST(VLogFile, CountsTheLinesThatTheDiskRefuses) {
    for (bool const threaded : {false, true}) {
        auto const full = NewLog("/dev/full");
        EXPECT_EQ(threaded && full->StartLoggingThread(), threaded);
        Numbered(0, 1000, full.Get());
        EXPECT_TRUE(full->ShutdownLoggingThread());
        EXPECT_TRUE(threaded ? full->DroppedLines() == 1001 : full->Close());
        EXPECT_EQ(full->DroppedLines(), 1001); // with the date
    }
    // A disk that is full in the middle of a line, and then has space again.
    constexpr rlim_t kSpace = 20'000;
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    rlimit const full{kSpace, before.rlim_max};
    auto* const handler = std::signal(SIGXFSZ, SIG_IGN);
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    ::setrlimit(RLIMIT_FSIZE, &full);
    Numbered(0, 3000, log.Get());
    log->AddString(std::string(100'000, 'x').c_str()); // longer than what gathers
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    log->AddString("space\n");
    log->Close();
    std::string const text = AfterTheDate(file.Bytes());
    auto const written = std::count(text.begin(), text.end(), '\n');
    EXPECT_EQ(text, Numbered(0, static_cast<int>(written - 1)) + "space\n");
    EXPECT_EQ(written + log->DroppedLines(), 3002);
    EXPECT_GT(text.size(), kSpace - 50);
}

TEST(VLogFile, PutsItsFileAsideBySizeAndByDay) {
    ScratchFile const file;
    auto const aside = [&](int number) { return BytesOf(file.Path() + ("." + std::to_string(number))); };
    for (bool const threaded : {false, true}) {
        auto const log = NewLog(file.Path());
        EXPECT_TRUE(log->SetRotation({100, false, 2}));
        EXPECT_EQ(threaded && log->StartLoggingThread(), threaded);
        Numbered(10, 60, log.Get()); // 8 bytes each, 10 to a file
        EXPECT_TRUE(log->ShutdownLoggingThread());
        EXPECT_TRUE(log->Close());
        EXPECT_EQ(AfterTheDate(file.Bytes()), Numbered(50, 60));
        EXPECT_EQ(AfterTheDate(aside(1)), Numbered(40, 50));
        EXPECT_EQ(AfterTheDate(aside(2)), Numbered(30, 40));
        EXPECT_FALSE(std::filesystem::exists(file.Path() + std::string(".3")));
    }
    auto const log = NewLog(file.Path());
    log->SetRotation({0, true});
    log->AddString("today\n");
    s_laterBy = 24L * 60 * 60;
    log->AddString("tomorrow\n");
    EXPECT_TRUE(log->Close());
    s_laterBy = 0;
    EXPECT_EQ(AfterTheDate(file.Bytes()), "tomorrow\n");
    EXPECT_EQ(AfterTheDate(aside(1)), "today\n");
}

TEST(VLogFile, GoesOnWithAFileThatCannotBePutAside) {
    ScratchFile const file;
    std::filesystem::create_directories(file.Path() + std::string(".1/full"));
    auto const log = NewLog(file.Path());
    log->SetRotation({40, false, 1});
    std::string const lines = Numbered(0, 50, log.Get());
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(AfterTheDate(file.Bytes()), lines);
    auto const device = NewLog("/dev/null");
    device->SetRotation({1, true, 1});
    Numbered(0, 3, device.Get());
    EXPECT_FALSE(std::filesystem::exists("/dev/null.1"));
}

TEST(VLogFile, FlushesEachLineWhenToldTo) {
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    log->SetFlushEachLine(true);
    std::string const direct = Numbered(0, 3, log.Get());
    EXPECT_EQ(AfterTheDate(file.Bytes()), direct);
    log->StartLoggingThread();
    log->SetFlushEachLine(false);
    Numbered(3, 1000, log.Get());
    log->SetFlushEachLine(true);
    Numbered(1000, 1001, log.Get());
    EXPECT_EQ(AfterTheDate(file.Bytes()), Numbered(0, 1001)); // after those in the queue
}

TEST(VLogFile, HasNoWriterThreadInAChildProcess) {
    ScratchFile const file;
    LogFileRef log = NewLog(file.Path());
    Numbered(0, 3, log.Get()); // still in the stream's buffer
    log->StartLoggingThread();
    Numbered(3, 6, log.Get()); // perhaps in the queue
    InChild([&] {
        EXPECT_FALSE(log->IsLoggingThreadRunning());
        log->AddString("child\n");
        EXPECT_TRUE(log->StartLoggingThread());
        log->AddString("child\n");
        EXPECT_TRUE(log->Close());
    });
    Numbered(6, 9, log.Get());
    EXPECT_TRUE(log->ShutdownLoggingThread());
    std::string text = AfterTheDate(file.Bytes());
    for (int i = 0; i < 2; ++i) {
        std::size_t const child = text.find("child\n");
        ASSERT_NE(child, std::string::npos) << text;
        text.erase(child, 6);
    }
    EXPECT_EQ(text, Numbered(0, 9)); // each once

    InitializeLibrary(false);
    EXPECT_TRUE(log->StartLoggingThread());
    VLog::SetLog(log.Get());
    InChild([&] {
        ::alarm(20); // it does not wait 25 s for the thread
        UninitializeLibrary(true, false, true);
    });
    log.Exchange(nullptr);
    UninitializeLibrary(true, false, true);
}

/// A log whose file is a pipe that is not read, with its thread stuck and its queue full.
class VLogFileStuck : public testing::Test {
  protected:
    VLogFileStuck() {
        ::mkfifo(m_file.Path(), 0600);
        m_reader = ::open(m_file.Path(), O_RDONLY | O_NONBLOCK);
        m_log = NewLog(m_file.Path());
        EXPECT_TRUE(m_log->StartLoggingThread());
        long added = 0;
        do { // until the thread has taken none in the meantime
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            added = m_added;
            for (long const dropped = m_log->DroppedLines(); m_log->DroppedLines() == dropped; ++m_added) {
                Numbered(m_added, m_added + 1, m_log.Get());
            }
        } while (m_added > added + 1);
        m_dropped = m_log->DroppedLines();
    }
    ~VLogFileStuck() override { ::close(m_reader); }

    /// What comes until the log's side is closed: no accepted line is missing.
    void ReadAll() const {
        ::fcntl(m_reader, F_SETFL, 0);
        std::string text;
        char bytes[4096];
        for (ssize_t count = 0; (count = ::read(m_reader, bytes, sizeof bytes)) > 0;) {
            text.append(bytes, static_cast<std::size_t>(count));
        }
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), m_added - m_dropped);
        std::string const kept = Numbered(0, VLogFile::kQueueCapacity);
        EXPECT_EQ(AfterTheDate(text).substr(0, kept.size()), kept);
    }

    LineLogScope m_traced;
    ScratchFile m_file;
    int m_reader = -1;
    LogFileRef m_log;
    int m_added = 0;
    long m_dropped = 0;
};

TEST_F(VLogFileStuck, LosesNothingThatItAccepted) {
    m_log->SetFullQueueWait(1);
    m_log->AddString("dropped\n"); // after the wait
    EXPECT_EQ(m_log->DroppedLines(), m_dropped + 1);
    m_log->SetFullQueueWait(60'000);
    std::future<void> reading;
    int const number = m_added++;
    ExpectWaits([&] { return !Numbered(number, number + 1, m_log.Get()).empty(); },
                [&] { reading = std::async(std::launch::async, [this] { ReadAll(); }); });
    EXPECT_EQ(m_log->DroppedLines(), m_dropped + 1);
    EXPECT_TRUE(m_log->ShutdownLoggingThread());
    EXPECT_TRUE(m_log->Close());
}

TEST_F(VLogFileStuck, KeepsNoLineWaitingOnceItsShutDownHasBegun) {
    m_log->SetFullQueueWait(600'000);
    std::future<bool> stopping;
    ExpectWaits([this] { return m_log->AddString("direct\n"), true; },
                [&] {
                    stopping =
                        std::async(std::launch::async, [this] { return m_log->ShutdownLoggingThread(); });
                });
    EXPECT_EQ(m_log->DroppedLines(), m_dropped + 1) << "no way past the thread";
    auto const reading = std::async(std::launch::async, [this] { ReadAll(); });
    EXPECT_TRUE(stopping.get());
    EXPECT_TRUE(m_log->Close());
}

TEST_F(VLogFileStuck, IsNotStuckInAChildProcess) {
    InChild([this] {
        EXPECT_FALSE(m_log->IsLoggingThreadRunning());
        EXPECT_EQ(StandardErrorOf(*m_log, "the parent's thread has the file"),
                  "the parent's thread has the file\n");
        EXPECT_TRUE(m_log->Close());
        ScratchFile const file;
        EXPECT_TRUE(m_log->Open(file.Path()));
        EXPECT_TRUE(m_log->StartLoggingThread());
        std::string const lines = Numbered(0, 10, m_log.Get());
        EXPECT_TRUE(m_log->Close());
        EXPECT_EQ(AfterTheDate(file.Bytes()), lines);
    });
    auto const reading = std::async(std::launch::async, [this] { ReadAll(); });
    EXPECT_TRUE(m_log->Close());
}

// 25 rounds of a second each.
TEST_F(VLogFileStuck, SlowIsGivenUpAndItsThreadStillHasWhatItNeeds) {
    EXPECT_FALSE(m_log->ShutdownLoggingThread());
    EXPECT_TRUE(m_traced.Has(" waiting for shutdown semaphore...(24/25)\n"));
    EXPECT_FALSE(m_traced.Has(" waiting for shutdown semaphore...(25/25)\n"));
    EXPECT_TRUE(m_traced.Has(
        " WARNING! Logging thread is still running after being told to shutdown! Bad Thread!\n"));
    EXPECT_FALSE(m_log->StartLoggingThread());
    EXPECT_FALSE(m_log->ShutdownLoggingThread());
    EXPECT_TRUE(
        m_traced.Has(" m_writingThread has already been set to zero, but thread is still running according "
                     "to m_bThreadIsRunning\n"));
    m_log->AddString("no way past the thread");
    EXPECT_EQ(m_log->DroppedLines(), m_dropped + 1);
    EXPECT_TRUE(m_log->Close());
    EXPECT_FALSE(m_log->Open(m_file.Path())); // the thread still holds the file
    m_log.Exchange(nullptr);
    ReadAll(); // the thread goes on, ends and closes the file
}

// The semaphores belong to the whole system.

void ForgetSemaphores() {
    ::sem_unlink("VLogFile");
    ::sem_unlink("VLogFileShutdown");
}

void ExpectToLoseNothing(VLogFile& log) {
    ScratchFile const file;
    EXPECT_TRUE(log.Open(file.Path()));
    EXPECT_TRUE(log.StartLoggingThread());
    std::string const lines = Numbered(0, 1000, &log);
    EXPECT_TRUE(log.ShutdownLoggingThread());
    EXPECT_EQ(AfterTheDate(file.Bytes()), lines);
}

TEST(VLogFile, IsNotMisledBySignalsThatAProcessHasLeft) {
    LineLogScope const traced;
    ForgetSemaphores();
    for (char const* const name : {"VLogFile", "VLogFileShutdown"}) { // more than the rounds of a shut-down
        ::sem_close(::sem_open(name, O_CREAT | O_EXCL, 0777, 40));
    }
    ExpectToLoseNothing(*NewLog(nullptr));
    ForgetSemaphores();
}

TEST(VLogFile, DoesWithoutSemaphores) {
    LineLogScope const traced;
    ForgetSemaphores();
    testing_support::s_refusesSemaphores = true;
    auto const log = NewLog(nullptr);
    testing_support::s_refusesSemaphores = false;
    EXPECT_TRUE(traced.Has("Error creating semaphore\n"));
    ExpectToLoseNothing(*log);
}

TEST(VLogFile, MayBeLeftWithItsThreadRunning) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(NewLog("/dev/null").Detach()->StartLoggingThread() ? std::exit(0) : void(),
                testing::ExitedWithCode(0), "");
}

} // namespace
