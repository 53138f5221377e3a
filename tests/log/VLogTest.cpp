#include "foundation/log/VLog.h"
#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLogContext.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VLock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <functional>
#include <future>
#include <regex>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using namespace VFoundation;
using Lines = std::vector<std::string>;

/// Keeps its lines in a list outside, so that they outlive it, and then does what it is told.
class ARecordingLog : public Registered<ARecordingLog, VLog> {
  public:
    static constexpr char const* kClassName = "ARecordingLog";
    static inline VClass* ms_theClass = nullptr;

    explicit ARecordingLog(Lines* lines = nullptr) : Registered(nullptr), m_lines(lines) {}
    ~ARecordingLog() override { VLog::Trace("destroyed\n"); }
    static ARecordingLog* New() { return new ARecordingLog; }

    void AddString(char const* line) override {
        m_lines->emplace_back(line);
        if (m_hook) {
            m_hook(line);
        }
    }
    using VLog::ms_bHeaderFooter;

    Lines* const m_lines;
    std::function<void(std::string const&)> m_hook;
};

using LogRef = VObjectRef<VLog>;

/// Makes a new default log (borrowed).
ARecordingLog* UseLog(Lines& lines) {
    VLog::SetSafeStartup();
    auto const log = VObjectRef<ARecordingLog>::Adopt(new ARecordingLog(&lines));
    VLog::SetLog(log.Get());
    return log.Get();
}

/// A hook that throws from lines that contain `text`.
auto ThrowFrom(char const* text) {
    return [text](std::string const& line) {
        if (line.find(text) != std::string::npos) {
            throw 7;
        }
    };
}

class VLogTest : public testing::Test {
  protected:
    ~VLogTest() override { VLog::SetLog(nullptr); }

    Lines m_lines;
    ARecordingLog* m_log = UseLog(m_lines);
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

TEST_F(VLogTest, EchoesTheTextOfTheFormatWhileSwitchedOff) {
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

TEST(VLog, IsSwitchedOffUntilTheLibraryStarts) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT((VLog::Trace("early\n"), std::exit(VLog::GetDefaultLog() ? 1 : 0)),
                testing::ExitedWithCode(0), "early");
}

TEST_F(VLogTest, IndentsByOneALevelUpToTen) {
    for (int i = 0; i < 11; ++i) {
        VLog::StartIndent();
    }
    VLog::Trace("%s %i\n", "b", 2);
    VLog::Trace(VLock());
    VLog::Divider();
    VLog::TraceDebug("debug\n");
    EXPECT_EQ(m_lines, (Lines{"          b 2\n", "[VLock]\n", "          " + std::string(78, '-') + "\n"}));
}

TEST_F(VLogTest, ContextBracketsItsLinesAndRestoresTheIndent) {
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

TEST_F(VLogTest, ShowsTheTimeOfTheInnermostContextButNotInTheLinesOfContexts) {
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

TEST_F(VLogTest, LinesUpToTheBufferComeOutWholeAndLongerOnesKeepTheirLineFeed) {
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

TEST_F(VLogTest, SetLogRetainsReleasesAndIgnoresTheSameLog) {
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

TEST_F(VLogTest, ClosesItsContextsWhenItDiesAndMakesNoNewLogMeanwhile) {
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

TEST_F(VLogTest, ContextOfAnotherLogWritesToTheDefaultLog) {
    Lines lines;
    auto const other = LogRef::Adopt(new ARecordingLog(&lines));
    { VLog::VLogContext const context("c", other.Get()); }
    EXPECT_EQ(VLog::GetDefaultLog()->GetIndentLevel(), 1);
    EXPECT_EQ(m_lines.size(), 2U);
    EXPECT_TRUE(lines.empty());
}

TEST_F(VLogTest, PlainLogEndsLinesAndDropsThemWhenBusyOrSilent) {
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
    EXPECT_EQ(log->DroppedLines(), 1); // the busy one; the silent one was not wanted
    int const saved = ::dup(STDERR_FILENO);
    int const full = ::open("/dev/full", O_WRONLY);
    ::dup2(full, STDERR_FILENO);
    ::close(full);
    VLog::Trace("no room\n");
    ::dup2(saved, STDERR_FILENO);
    ::close(saved);
    EXPECT_EQ(log->DroppedLines(), 2);
}

TEST_F(VLogTest, ForgetsAContextWhoseStartLineThrows) {
    m_log->m_hook = ThrowFrom("START");
    EXPECT_THROW(VLog::StartLoggingContext("stack"), int);
    EXPECT_THROW(VLog::VLogContext("local"), int);
    EXPECT_EQ(m_log->GetIndentLevel(), 0);
    EXPECT_FALSE(ARecordingLog::ms_bHeaderFooter);
    VLog::EndLoggingContext(); // none is open
    EXPECT_EQ(m_lines, (Lines{"[ stack - START ]\n", "[ local - START ]\n"}));
    EXPECT_EQ(m_log->DroppedLines(), 2);
    VLog::SetLog(nullptr); // and would find the context of a log that is gone
}

TEST_F(VLogTest, ClosesAContextWhoseEndLineThrows) {
    m_log->m_hook = ThrowFrom("END");
    VLog::StartIndent();
    VLog::StartLoggingContext("thrown");
    EXPECT_THROW(VLog::EndLoggingContext(), int);
    { VLog::VLogContext const swallowed("swallowed"); }
    EXPECT_EQ(m_log->GetIndentLevel(), 1);
    EXPECT_FALSE(ARecordingLog::ms_bHeaderFooter);
    VLog::EndLoggingContext();
    EXPECT_EQ(m_lines.size(), 4U);
}

TEST_F(VLogTest, PassesOnWhatItsOwnEndThrowsOnceItIsGone) {
    for (auto* const end : {&VLog::DestroyDefaultLog, &VLog::SetSafeShutdown}) {
        Lines lines;
        auto* const log = UseLog(lines);
        VLog::StartLoggingContext("outer");
        VLog::StartLoggingContext("inner");
        log->m_hook = ThrowFrom("");
        EXPECT_THROW(end(), int);
        EXPECT_EQ(lines.back(), "destroyed\n"); // what that throws stays in the destructor
        EXPECT_EQ(WithoutTimes(Lines(lines.end() - 3, lines.end() - 1)),
                  (Lines{" [ inner - END ] T\n", "[ outer - END ] T\n"}));
    }
}

TEST_F(VLogTest, ThrowsNeitherFromTraceNoThrowNorWhenAnExceptionIsMade) {
    m_log->m_hook = ThrowFrom("");
    EXPECT_THROW(VLog::Trace("%i\n", 1), int);
    EXPECT_NO_THROW(VLog::TraceNoThrow("%i\n", 2));
    EXPECT_NO_THROW(VException(0, nullptr, "made", -1));
    EXPECT_EQ(m_lines.size(), 3U);
    EXPECT_EQ(m_log->DroppedLines(), 3);
    // An exception of the library's own is traced in its turn.
    m_log->m_hook = [](std::string const&) { throw VException(0, nullptr, "again", -1); };
    EXPECT_THROW(VLog::Trace("first\n"), VException);
    EXPECT_EQ(m_lines.size(), 3U + 1 + VLog::kMaxNesting);
}

TEST_F(VLogTest, BoundsTheLinesThatItTracesItself) {
    m_log->m_hook = [](std::string const&) {
        VLog::StartLoggingContext("c");
        VLog::EndLoggingContext();
    };
    VLog::Trace("first\n");
    EXPECT_EQ(m_lines.size(), 1U + 2 + 4 + 8 + 16); // a nesting deeper each, `kMaxNesting` times
    EXPECT_EQ(m_log->DroppedLines(), 32);
    EXPECT_EQ(m_log->GetIndentLevel(), 0);
}

TEST_F(VLogTest, MayBeReplacedAndDestroyedByItsOwnLine) {
    m_log->m_hook = [this](std::string const& line) {
        if (line == "go\n" || line.find("START") != std::string::npos) {
            VLog::DestroyDefaultLog();
        } else {
            VLog::StartLoggingContext("not opened by a log that dies");
            VLog::SetLog(m_log); // and not taken
        }
    };
    VLog::Trace("go\n");
    EXPECT_EQ(m_lines, (Lines{"go\n", "destroyed\n"}));
    EXPECT_STREQ(VLog::GetDefaultLog()->ClassName(), "VLog");
    m_lines.clear();
    UseLog(m_lines)->m_hook = [](std::string const& line) {
        line == "[ c - START ]\n" ? VLog::DestroyDefaultLog() : void();
    };
    VLog::StartLoggingContext("c");
    EXPECT_EQ(WithoutTimes(m_lines), (Lines{"[ c - START ]\n", "[ c - END ] T\n", "destroyed\n"}));
}

TEST_F(VLogTest, WritesTheLinesOfItsEndToTheDefaultLogUnlessItIsThat) {
    Lines lines;
    auto log = VObjectRef<ARecordingLog>(UseLog(lines));
    VLog::StartLoggingContext("c");
    UseLog(m_lines);
    m_lines.clear();
    lines.clear();
    log.Exchange(nullptr);
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(WithoutTimes(m_lines), (Lines{"[ c - END ] T\n", "destroyed\n"}));
}

TEST_F(VLogTest, LeavesOutLinesBelowItsLevel) {
    for (long const level : {0L, 1L, 3L}) {
        m_log->SetLevel(level);
        VLog::TraceAt(VLog::eDebug, "%i\n", 1);
        VLog::TraceAt(VLog::eInfo, "%i\n", 2);
        VLog::TraceAt(VLog::eWarning, "%s\n", std::string(1100, 'x').c_str());
        VLog::TraceAt(VLog::eError, "%i\n", 4);
    }
    std::string const warning = "WARNING: " + std::string(1013, 'x') + "\n";
    EXPECT_EQ(m_lines, (Lines{"DEBUG: 1\n", "2\n", warning, "ERROR: 4\n", "2\n", warning, "ERROR: 4\n",
                              "ERROR: 4\n"}));
}

TEST_F(VLogTest, ShowsTheTimeOfDayExceptInTables) {
    m_log->SetShowTimeOfDay(true);
    VLog::StartIndent();
    VLog::Trace("line\n");
    m_log->SetAllowAnnotations(false);
    VLog::Trace("row\n");
    EXPECT_TRUE(
        std::regex_match(m_lines[0], std::regex("[0-2][0-9]:[0-5][0-9]:[0-6][0-9]\\.[0-9]{3}  line\n")))
        << m_lines[0];
    EXPECT_EQ(m_lines[1], " row\n");
}

TEST_F(VLogTest, HandsItsLinesToASecondLogWhateverThatDoes) {
    Lines lines;
    auto const second = VObjectRef<ARecordingLog>::Adopt(new ARecordingLog(&lines));
    EXPECT_FALSE(m_log->SetTee(m_log));
    EXPECT_TRUE(m_log->SetTee(second.Get()));
    EXPECT_TRUE(second->SetTee(m_log)); // which does not go round
    second->m_hook = ThrowFrom("");
    m_log->m_hook = ThrowFrom("both");
    EXPECT_THROW(VLog::Trace("both\n"), int);
    VLog::StartIndent();
    VLog::Trace("indented\n");
    EXPECT_EQ(lines, (Lines{"both\n", " indented\n"}));
    EXPECT_EQ(m_lines, lines);
    EXPECT_EQ(second->DroppedLines(), 2);
    EXPECT_EQ(m_log->DroppedLines(), 1);
    second->SetTee(nullptr);
    m_log->SetTee(nullptr);
    VLog::Trace("alone\n");
    EXPECT_EQ(lines.size(), 2U);
    EXPECT_EQ(second->RetainCount(), 1);
}

TEST_F(VLogTest, TellsOfItsFirstLoss) {
    int calls = 0;
    m_log->m_hook = ThrowFrom("lost");
    EXPECT_THROW(VLog::Trace("lost\n"), int);
    m_log->SetOnFirstLoss([&] {
        ++calls;
        VLog::Trace("told\n"); // no lock is held
        throw 7;               // and goes nowhere
    });
    VLog::Trace("written\n");
    EXPECT_EQ(calls, 0) << "none since";
    EXPECT_THROW(VLog::Trace("lost\n"), int);
    EXPECT_THROW(VLog::Trace("lost\n"), int);
    EXPECT_EQ(calls, 1);
}

TEST_F(VLogTest, KeepsTheLibraryQuietAboutItsRoutine) {
    VLog::SetShowRoutineLines(false);
    VLog::TraceRoutine("routine\n");
    VLog::SetShowRoutineLines(true);
    VLog::TraceRoutine("%s\n", "shown");
    EXPECT_EQ(m_lines, Lines{"shown\n"});
}

TEST_F(VLogTest, ManyThreadsWriteWholeLinesWhileTheLogIsReplaced) {
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
    std::regex const whole(" *(line [0-9]+\\.|\\[ c - START \\]|\\[ c - END \\] [0-9]+\\.[0-9]{4})\n");
    EXPECT_EQ(std::regex_replace(output, whole, ""), "");
    EXPECT_EQ(std::count(output.begin(), output.end(), 'l'), 2 * kLines);
}

} // namespace
