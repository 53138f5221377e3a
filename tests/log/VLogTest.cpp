#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLog.h"
#include "foundation/log/VLogContext.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VLock.h"

#include <gtest/gtest.h>

#include <future>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace VFoundation;
using Lines = std::vector<std::string>;

/// Keeps its lines in a list outside, so that they outlive it.
class ARecordingLog : public Registered<ARecordingLog, VLog> {
  public:
    static constexpr char const* kClassName = "ARecordingLog";
    static inline VClass* ms_theClass = nullptr;

    explicit ARecordingLog(Lines* lines = nullptr) : Registered(nullptr), m_lines(lines) {}
    ~ARecordingLog() override { VLog::Trace("destroyed\n"); }
    static ARecordingLog* New() { return new ARecordingLog; }

    void AddString(char const* line) override { m_lines->emplace_back(line); }
    using VLog::ms_bHeaderFooter;

    Lines* const m_lines;
};

using LogRef = VObjectRef<VLog>;

void UseLog(Lines& lines) {
    VLog::SetSafeStartup();
    VLog::SetLog(LogRef::Adopt(new ARecordingLog(&lines)).Get());
}

class Log : public testing::Test {
  protected:
    Log() { UseLog(m_lines); }
    ~Log() override { VLog::DestroyDefaultLog(); }

    Lines m_lines;
};

/// What `action` writes to the standard error stream.
template <class Action>
std::string StandardError(Action action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

/// The lines with their seconds, which have four decimals, made comparable.
Lines WithoutTimes(Lines lines) {
    for (std::string& line : lines) {
        line = std::regex_replace(line, std::regex("[0-9]+\\.[0-9]{4}\\b"), "T");
    }
    return lines;
}

TEST_F(Log, EchoesTheTextOfTheFormatWhileSwitchedOff) {
    VLog::SetSafeShutdown();
    long const logs = VLog::TheClass()->Created();
    EXPECT_EQ(StandardError([] {
                  VLog::Trace("50%% of %s, %i\n", "x", 3);
                  VLog::VLogContext const local("x");
                  VLog::StartIndent();
                  VLog::StartLoggingContext("none");
                  VLog::EndLoggingContext();
                  VLog::Divider();
                  VLog::Trace(VLock());
                  VLog::TraceDebug("debug\n");
                  ms_bVerbose = false;
                  VLog::Trace("silent\n");
                  ms_bVerbose = true;
              }),
              "50% of %s, %i\n[ %s - START ]\n[ %s - END ] %5.4lf\n");
    EXPECT_EQ(VLog::GetDefaultLog(), nullptr);
    EXPECT_EQ(VLog::TheClass()->Created(), logs);
}

TEST_F(Log, IndentsByOneALevelUpToTen) {
    for (int i = 0; i < 11; ++i) {
        VLog::StartIndent();
    }
    VLog::Trace("%s %i\n", "b", 2);
    VLog::Trace(VLock());
    VLog::Divider();
    VLog::TraceDebug("debug\n");
    EXPECT_EQ(m_lines, (Lines{"          b 2\n", "[VLock]\n", "          " + std::string(78, '-') + "\n"}));
}

TEST_F(Log, ContextBracketsItsLinesAndRestoresTheIndent) {
    VLog::StartIndent();
    VLog::StartLoggingContext("outer");
    VLog::Trace("inside\n");
    VLog::StartIndent();
    VLog::StartLoggingContext(nullptr);
    VLog::EndLoggingContext();
    VLog::Trace("deeper\n");
    VLog::EndLoggingContext();
    VLog::EndLoggingContext(); // none is open
    EXPECT_EQ(WithoutTimes(m_lines), (Lines{" [ outer - START ]\n", "  inside\n", "   [  - START ]\n",
                                            "   [  - END ] T\n", "   deeper\n", " [ outer - END ] T\n"}));
}

TEST_F(Log, ShowsTheTimeOfTheInnermostContextButNotInTheLinesOfContexts) {
    VLog::GetDefaultLog()->SetShowContextTime(true);
    VLog::Trace("outside\n");
    VLog::StartLoggingContext("a");
    VLog::Trace("inside\n");
    VLog::StartLoggingContext("b");
    VLog::EndLoggingContext();
    ARecordingLog::ms_bHeaderFooter = true; // as while another thread writes a start line
    VLog::Trace("beside\n");
    ARecordingLog::ms_bHeaderFooter = false;
    VLog::EndLoggingContext();
    EXPECT_EQ(WithoutTimes(m_lines), (Lines{"outside\n", "[ a - START ]\n", " T inside\n", " [ b - START ]\n",
                                            " [ b - END ] T\n", " beside\n", "[ a - END ] T\n"}));
}

TEST_F(Log, LinesUpToTheBufferComeOutWholeAndLongerOnesKeepTheirLineFeed) {
    std::string const longest(1022, 'x');
    for (char const* const end : {"\n", "y\n", "yyy\n", "yyy"}) {
        VLog::Trace("%s", (longest + end).c_str());
    }
    VLog::StartIndent();
    VLog::Trace("%s\n", longest.c_str());
    VLog::Trace(static_cast<char const*>(nullptr));
    EXPECT_EQ(m_lines, (Lines{longest + "\n", longest + "\n", longest + "\n", longest + "y",
                              " " + longest.substr(1) + "\n"}));
}

TEST_F(Log, SetLogRetainsReleasesAndIgnoresTheSameLog) {
    Lines lines;
    auto const log = LogRef::Adopt(new ARecordingLog(&lines));
    VLog::SetLog(log.Get());
    VLog::SetLog(log.Get());
    EXPECT_EQ(log->RetainCount(), 2);
    EXPECT_EQ(m_lines, Lines{"destroyed\n"}) << "a dying log traces to itself";
    VLog::SetLog(nullptr);
    EXPECT_EQ(log->RetainCount(), 1);
    EXPECT_TRUE(VLog::GetDefaultLog()->IsMemberOfClass(VLog::TheClass())) << "made on demand";
}

TEST_F(Log, ClosesItsContextsWhenItDiesAndMakesNoNewLogMeanwhile) {
    for (auto* const end : {&VLog::DestroyDefaultLog, &VLog::SetSafeShutdown}) {
        Lines lines;
        UseLog(lines);
        VLog::StartLoggingContext("outer");
        VLog::StartLoggingContext("inner");
        auto* const local = new VLog::VLogContext("local");
        long const logs = VLog::TheClass()->Created();
        end();
        EXPECT_EQ(VLog::TheClass()->Created(), logs);
        Lines next;
        UseLog(next);
        local->Release(); // outlives its log
        VLog::SetLog(nullptr);
        lines.erase(lines.begin(), lines.begin() + 3);
        EXPECT_EQ(WithoutTimes(lines), (Lines{" [ inner - END ] T\n", "[ outer - END ] T\n", "destroyed\n"}));
        EXPECT_EQ(WithoutTimes(next), (Lines{"[ local - END ] T\n", "destroyed\n"}));
    }
}

TEST_F(Log, ContextOfAnotherLogWritesToTheDefaultLog) {
    Lines lines;
    auto const other = LogRef::Adopt(new ARecordingLog(&lines));
    { VLog::VLogContext const context("c", other.Get()); }
    EXPECT_EQ(VLog::GetDefaultLog()->GetIndentLevel(), 1);
    EXPECT_EQ(m_lines.size(), 2U);
    EXPECT_TRUE(lines.empty());
}

TEST_F(Log, PlainLogEndsLinesAndDropsThemWhenBusyOrSilent) {
    struct APlainLog : VLog {
        using VLog::CriticalSection;
    };
    auto const log = VObjectRef<APlainLog>::Adopt(new APlainLog);
    VLog::SetLog(log.Get());
    EXPECT_EQ(StandardError([&] {
                  VLog::Trace("fed\n");
                  VLog::Trace("bare");
                  VLog::Trace("%s", "");
                  log->AddString(nullptr);
                  ms_bVerbose = false;
                  VLog::Trace("silent\n");
                  ms_bVerbose = true;
                  log->CriticalSection()->EnterCriticalSection();
                  std::thread([] { VLog::Trace("lost\n"); }).join();
                  log->CriticalSection()->LeaveCriticalSection();
              }),
              "fed\nbare\n");
    VLog::SetLog(nullptr);
}

TEST_F(Log, ManyThreadsWriteWholeLinesWhileTheLogIsReplaced) {
    constexpr int kLines = 400;
    VLog::SetLog(nullptr);
    std::string const output = StandardError([] {
        std::atomic<int> tracing{2};
        auto const trace = [&] {
            for (int i = 0; i < kLines; ++i) {
                VLog::Trace("line %i.\n", i);
            }
            --tracing;
        };
        auto const first = std::async(std::launch::async, trace);
        auto const second = std::async(std::launch::async, trace);
        for (bool replace = false; tracing > 0; replace = !replace) {
            VLog::StartLoggingContext("c");
            VLog::SetLog(replace ? LogRef::Adopt(VLog::New()).Get() : nullptr);
            VLog::EndLoggingContext();
        }
    });
    std::regex const whole(" *(line [0-9]+\\.|\\[ c - START \\]|\\[ c - END \\] [0-9]+\\.[0-9]{4})");
    std::istringstream stream(output);
    int traced = 0;
    for (std::string line; std::getline(stream, line);) {
        EXPECT_TRUE(std::regex_match(line, whole)) << line;
        traced += line.find("line") != std::string::npos;
    }
    EXPECT_EQ(traced, 2 * kLines);
}

} // namespace
