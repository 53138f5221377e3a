#include "foundation/log/VLogFile.h"
#include "tests/support/ScratchFile.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>

namespace {

using namespace VFoundation;

// Lines are numbered by thread. Those that were not dropped are in the file, each once, whole and in its
// thread's order; the log may drop lines, and says how many, or lets them wait. Two threads leave the writer time, two
// do not.
class LogFileStress : public testing::TestWithParam<long> {};

TEST_P(LogFileStress, LosesNoAcceptedLine) {
    constexpr std::size_t kThreads = 4;
    int const each = 50'000 * testing_support::StressFactor();
    testing_support::ScratchFile const file;
    auto const log = VObjectRef<VLogFile>::Adopt(new VLogFile(file.Path()));
    log->SetFullQueueWait(GetParam());
    ASSERT_TRUE(log->StartLoggingThread());
    testing_support::OnThreads(kThreads, [&](int thread) {
        char line[64];
        for (int i = 0; i < each; ++i) {
            std::snprintf(line, sizeof line, "\n<%i %i>", thread, i);
            log->AddString(line);
            if (thread < 2 && i % 256 == 255) {
                std::this_thread::sleep_for(std::chrono::microseconds(300));
            }
        }
    });
    long const dropped = log->DroppedLines();
    ASSERT_TRUE(log->ShutdownLoggingThread());

    std::FILE* const written = std::fopen(file.Path(), "r");
    char date[64];
    ASSERT_NE(std::fgets(date, sizeof date, written), nullptr);
    std::array<int, kThreads> last{-1, -1, -1, -1};
    long lines = 0;
    int number = 0;
    for (unsigned thread = 0; std::fscanf(written, "<%u %i>\n", &thread, &number) == 2; ++lines) {
        ASSERT_LT(thread, kThreads);
        ASSERT_GT(number, std::exchange(last[thread], number));
    }
    EXPECT_NE(std::feof(written), 0);
    std::fclose(written);
    EXPECT_EQ(lines + dropped, long{kThreads} * each);
    EXPECT_GE(lines, VLogFile::kQueueCapacity);
    if (GetParam() > 0) {
        EXPECT_EQ(dropped, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Waits, LogFileStress, testing::Values(0, 60'000));

// Two threads trace while two open and close files and start and stop the writer. Each line is in a file, on
// the standard error stream or counted.
TEST(LogFileStressAlone, LosesNoLineWhileFilesAndWritersComeAndGo) {
    int const each = 20'000 * testing_support::StressFactor();
    testing_support::ScratchFile const folder;
    auto const log = VObjectRef<VLogFile>::Adopt(new VLogFile(nullptr));
    std::atomic<int> tracing{2};
    ms_bVerbose = true;
    testing::internal::CaptureStderr();
    testing_support::OnThreads(4, [&](int thread) {
        for (int i = 0; thread < 2 && i < each; ++i) {
            log->AddString("<line>\n");
            if (i % 64 == 63) {
                std::this_thread::sleep_for(std::chrono::microseconds(100));
            }
        }
        tracing -= thread < 2 ? 1 : 0;
        for (int i = 0; tracing > 0; ++i) {
            log->Open((folder.Path() + std::to_string(thread) + "." + std::to_string(i)).c_str());
            log->StartLoggingThread();
            std::this_thread::sleep_for(std::chrono::microseconds(100 * (i % 8)));
            if (thread == 2 || i % 4 == 0) {
                log->ShutdownLoggingThread();
            }
            log->Close();
        }
    });
    EXPECT_TRUE(log->ShutdownLoggingThread());
    std::string all = testing::internal::GetCapturedStderr();
    for (auto const& file : std::filesystem::directory_iterator(folder.Folder())) {
        all += testing_support::BytesOf(file.path());
    }
    EXPECT_EQ(std::count(all.begin(), all.end(), '<') + log->DroppedLines(), 2L * each);
}

} // namespace
