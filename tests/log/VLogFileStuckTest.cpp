#include "tests/log/LogFileTestSupport.h"
#include "tests/support/Fork.h"
#include "tests/support/LineLog.h"

#include <future>
#include <sys/stat.h>
#include <thread>

namespace {

using namespace log_test;

/// A log whose file is a pipe that is not read, with its thread stuck and its queue full.
class VLogFileStuck : public testing::Test {
  protected:
    VLogFileStuck() {
        ::mkfifo(m_file.Path(), 0600);
        m_reader = ::open(m_file.Path(), O_RDONLY | O_NONBLOCK);
        LeaveSignals(); // which must not end a shut-down
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
    ~VLogFileStuck() override {
        ::close(m_reader);
        ForgetSemaphores();
    }

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

TEST_F(VLogFileStuck, ClosesItsFileOnceTheThreadHasLetGo) {
    EXPECT_TRUE(m_log->Close());
    auto const reading = std::async(std::launch::async, [this] { ReadAll(); });
    EXPECT_TRUE(m_log->ShutdownLoggingThread());
    EXPECT_EQ(reading.wait_for(std::chrono::minutes(1)), std::future_status::ready) << "it is still open";
    m_log.Exchange(nullptr);
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

} // namespace
