#include "foundation/log/VLogFile.h"
#include "tests/support/ScratchFile.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>

namespace {

using namespace VFoundation;
using testing_support::OnThreads;
using testing_support::StressFactor;

/// Whether the threads leave the writer time to keep up.
class LogFileStress : public testing::TestWithParam<bool> {};

// Lines are numbered by thread. Those that were not dropped are in the file, each once, whole and in its thread's
// order; the log may drop lines, and says how many.
TEST_P(LogFileStress, LosesNoAcceptedLine) {
    bool const paced = GetParam();
    ms_bVerbose = false;
    constexpr int kThreads = 4;
    int const each = 50'000 * StressFactor();
    testing_support::ScratchFile const file;
    auto const log = VObjectRef<VLogFile>::Adopt(new VLogFile(file.Path()));
    ASSERT_TRUE(log->StartLoggingThread());
    OnThreads(kThreads, [&](int thread) {
        char line[64];
        for (int i = 0; i < each; ++i) {
            std::snprintf(line, sizeof line, "\n<%i %i>", thread, i);
            log->AddString(line);
            if (paced && i % 256 == 255) {
                std::this_thread::sleep_for(std::chrono::microseconds(300));
            }
        }
    });
    long const dropped = log->DroppedLines();
    ASSERT_TRUE(log->ShutdownLoggingThread());

    std::FILE* const written = std::fopen(file.Path(), "r");
    ASSERT_NE(written, nullptr);
    char date[64];
    ASSERT_NE(std::fgets(date, sizeof date, written), nullptr);
    std::array<int, kThreads> last{-1, -1, -1, -1};
    long lines = 0;
    for (int thread = 0, number = 0; std::fscanf(written, "<%i %i>\n", &thread, &number) == 2; ++lines) {
        ASSERT_TRUE(thread >= 0 && thread < kThreads);
        ASSERT_GT(number, last[static_cast<std::size_t>(thread)]);
        last[static_cast<std::size_t>(thread)] = number;
    }
    EXPECT_NE(std::feof(written), 0);
    std::fclose(written);
    EXPECT_EQ(lines + dropped, long{kThreads} * each);
    EXPECT_GE(lines, VLogFile::kQueueCapacity);
    RecordProperty("dropped", static_cast<int>(dropped));
}

INSTANTIATE_TEST_SUITE_P(Pace, LogFileStress, testing::Bool());

} // namespace
