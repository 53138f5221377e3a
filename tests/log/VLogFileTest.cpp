#include "foundation/log/VLogFile.h"
#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "tests/log/LogFileTestSupport.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Fork.h"
#include "tests/support/FullDisk.h"
#include "tests/support/LineLog.h"
#include "tests/support/PrivateSemaphores.h"

#include <gtest/gtest.h>

#include <ctime>
#include <functional>
#include <optional>
#include <pthread.h>
#include <semaphore.h>
#include <sys/resource.h>
#include <thread>

namespace {
std::time_t s_laterBy = 0;
std::function<void()> s_onTime; // set while no other thread writes
} // namespace

/// Stands before the system's, so that the next day comes when a test says so.
extern "C" std::time_t time(std::time_t* result) noexcept {
    if (s_onTime) {
        s_onTime();
    }
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME, &now);
    std::time_t const time = now.tv_sec + s_laterBy;
    return result ? *result = time : time;
}

namespace {

using namespace log_test;

int SignalsForTheThread() {
    sem_t* const semaphore = ::sem_open("VLogFile", 0);
    int signals = 0;
    ::sem_getvalue(semaphore, &signals);
    ::sem_close(semaphore);
    return signals;
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
    ForgetSemaphores();
    ScratchFile const first;
    ScratchFile const second;
    auto const log = NewLog(first.Path());
    EXPECT_TRUE(log->StartLoggingThread());
    EXPECT_FALSE(log->StartLoggingThread());
    std::string const lines = Numbered(0, 500, log.Get());
    // The thread does not wait for the end.
    WaitUntil([&] { return first.Bytes().size() >= 24 + lines.size(); });
    EXPECT_TRUE(log->ShutdownLoggingThread());
    EXPECT_LT(SignalsForTheThread(), 250) << "they go with their lines";
    EXPECT_TRUE(log->StartLoggingThread());
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
    int told = 0;
    auto const closing = NewLog("/dev/full");
    closing->SetOnFirstLoss([&] { ++told; });
    EXPECT_TRUE(closing->Close());
    EXPECT_EQ(told, 1);
    // A disk that is full in the middle of a line, and then has space again.
    constexpr rlim_t kSpace = 20'000;
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    {
        FullDisk const full(kSpace);
        Numbered(0, 3000, log.Get());
        log->AddString(std::string(100'000, 'x').c_str()); // longer than what gathers
    }
    log->AddString("space\n");
    log->Close();
    std::string const text = AfterTheDate(file.Bytes());
    auto const written = std::count(text.begin(), text.end(), '\n');
    EXPECT_EQ(text, Numbered(0, static_cast<int>(written - 1)) + "space\n");
    EXPECT_EQ(written + log->DroppedLines(), 3002);
    EXPECT_GT(text.size(), kSpace - 50);
    // One that takes all, and fails when the file is closed.
    auto const late = NewLog(file.Path());
    late->SetFlushEachLine(true);
    late->AddString("lost\n");
    for (auto const& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        if (std::filesystem::read_symlink(entry, error) == file.Path()) {
            ::close(std::stoi(entry.path().filename()));
        }
    }
    EXPECT_TRUE(late->Close());
    EXPECT_EQ(late->DroppedLines(), 1);
}

TEST(VLogFile, PutsItsFileAsideBySizeAndByDay) {
    ScratchFile const file;
    auto const aside = [&](int number) { return BytesOf(file.Path() + ("." + std::to_string(number))); };
    for (bool const threaded : {false, true}) {
        auto const log = NewLog(file.Path());
        EXPECT_TRUE(log->SetRotation({100, false, 3}));
        EXPECT_EQ(threaded && log->StartLoggingThread(), threaded);
        Numbered(10, 60, log.Get()); // 8 bytes each, 10 to a file
        EXPECT_TRUE(log->ShutdownLoggingThread());
        EXPECT_TRUE(log->Close());
        EXPECT_EQ(AfterTheDate(file.Bytes()), Numbered(50, 60));
        EXPECT_EQ(AfterTheDate(aside(1)), Numbered(40, 50));
        EXPECT_EQ(AfterTheDate(aside(2)), Numbered(30, 40));
        EXPECT_EQ(AfterTheDate(aside(3)), Numbered(20, 30));
        EXPECT_FALSE(std::filesystem::exists(file.Path() + std::string(".4")));
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
    std::string const aside = file.Path() + std::string(".1");
    std::filesystem::create_directories(aside + "/full");
    auto const log = NewLog(file.Path());
    log->SetRotation({60, false, 1});
    Numbered(10, 16, log.Get()); // the last one finds 64 bytes in the file
    std::filesystem::remove_all(aside);
    Numbered(16, 25, log.Get()); // and it is tried again 60 bytes later
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(AfterTheDate(BytesOf(aside)), Numbered(10, 23));
    EXPECT_EQ(AfterTheDate(file.Bytes()), Numbered(23, 25));

    std::filesystem::remove(aside);
    EXPECT_TRUE(log->Open(file.Path()));
    rlimit before{};
    ::getrlimit(RLIMIT_NOFILE, &before);
    rlimit const none{0, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none); // the fresh file cannot be opened
    Numbered(10, 20, log.Get());
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(AfterTheDate(file.Bytes()), Numbered(10, 20));
    EXPECT_FALSE(std::filesystem::exists(aside));

    std::string const link = file.Path() + std::string(".link");
    std::filesystem::create_symlink(file.Path(), link);
    EXPECT_TRUE(log->Open(link.c_str()));
    Numbered(10, 20, log.Get());
    EXPECT_TRUE(log->Close());
    EXPECT_EQ(AfterTheDate(file.Bytes()), Numbered(10, 20));
    EXPECT_FALSE(std::filesystem::exists(link + ".1"));
}

TEST(VLogFile, LosesNoLineThatItsClosingOvertakes) {
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    EXPECT_TRUE(log->StartLoggingThread());
    VString::ms_bRecyclingEnabled = false;
    std::function<void()> const close = [&] { log->Close(); };
    testing::internal::CaptureStderr();
    t_onNew = &close; // while the line is copied for the queue
    log->AddString("overtaken\n");
    EXPECT_EQ(t_onNew, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "overtaken\n");
    VString::ms_bRecyclingEnabled = true;
    EXPECT_EQ(log->DroppedLines(), 0);
}

TEST(VLogFile, GivesADirectLineItsTurnBesideABusyThread) {
    ScratchFile const file;
    auto const log = NewLog(file.Path());
    log->SetRotation({0, true}); // asks for the time before each line
    std::atomic<bool> isFull{false};
    int written = 0;
    s_onTime = [&, test = std::this_thread::get_id()] { // the thread has the file
        if (std::this_thread::get_id() != test && written++ % 64 == 0) {
            WaitUntil([&] { return isFull.load(); });
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    };
    EXPECT_TRUE(log->StartLoggingThread());
    std::string const lines = Numbered(0, 2000, log.Get());
    isFull = true;
    log->SetFlushEachLine(true);
    log->AddString("direct\n"); // waits for 100 ms at most
    EXPECT_TRUE(log->Close());
    EXPECT_TRUE(log->ShutdownLoggingThread());
    s_onTime = nullptr;
    EXPECT_EQ(log->DroppedLines(), 0);
    EXPECT_EQ(AfterTheDate(file.Bytes()), lines + "direct\n");
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
    LeaveSignals();
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
    InChild([] {
        static VLogFile* const left =
            NewLog("/dev/null").Detach(); // no leak: the thread may not have started
        ASSERT_TRUE(left->StartLoggingThread());
        std::exit(0);
    });
}

} // namespace
