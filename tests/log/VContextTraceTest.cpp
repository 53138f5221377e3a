#include "foundation/log/VContextTrace.h"
#include "foundation/log/VLogContext.h"
#include "tests/support/LineLog.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <regex>
#include <string>
#include <thread>

namespace {

using namespace VFoundation;
using testing_support::ScratchFile;

/// All that a JSON string may hold, in UTF-8 without its longer forms.
constexpr char kString[] = "\"(?:[^\"\\\\\\x00-\\x1f]|\\\\[\"\\\\]|\\\\u[0-9a-f]{4})*\"";

TEST(VContextTrace, WritesNestedContextsAsEvents) {
    testing_support::LineLogScope const log;
    VContextTrace trace;
    auto early = VObjectRef<VLog::VLogContext>::Adopt(new VLog::VLogContext("early"));
    EXPECT_TRUE(trace.Start());
    EXPECT_FALSE(VContextTrace().Start());
    // Half of a pair, beyond the last character, longer than need be, no character, cut.
    std::string const broken = "\xED\xA0\x80\xF4\x90\x80\x80\xE0\x9F\xBF\xEF\xBF\xBE\xE2\x82";
    std::string replaced;
    for (std::size_t i = 0; i < broken.size(); ++i) {
        replaced += "\xEF\xBF\xBD";
    }
    VLog::StartLoggingContext(("out\"er\\\x01\xC3\xA4\xFF<&>" + broken).c_str());
    std::thread([] { VLog::VLogContext const context("elsewhere"); }).join();
    { VLog::VLogContext const inner(nullptr); }
    VLog::EndLoggingContext();
    early.Exchange(nullptr);
    trace.Stop();
    { VLog::VLogContext const context("not recorded"); }
    EXPECT_EQ(trace.ContextCount(), 4);

    ScratchFile const file;
    EXPECT_TRUE(trace.WriteTraceEvents(file.Path()));
    std::string const text = file.Bytes();
    std::string const event =
        std::string("\\{\"name\":(") + kString +
        "),\"cat\":\"context\",\"ph\":\"X\",\"ts\":([0-9]+\\.[0-9]{3}),\"dur\":([0-9]+\\.[0-9]{3}),"
        "\"pid\":1,\"tid\":([0-9]+)\\}";
    EXPECT_TRUE(std::regex_match(text, std::regex("\\{\"displayTimeUnit\":\"ms\",\"traceEvents\":\\[\n" +
                                                  event + "(?:,\n" + event + ")*\n\\]\\}\n")))
        << text;
    std::vector<std::smatch> events;
    std::regex const one(event);
    for (std::sregex_iterator match(text.begin(), text.end(), one); match != std::sregex_iterator();
         ++match) {
        events.push_back(*match);
    }
    ASSERT_EQ(events.size(), 4U);
    EXPECT_EQ(events[0][1], "\"elsewhere\"");
    EXPECT_EQ(events[1][1], "\"early\"");
    EXPECT_EQ(events[1][2], "0.000") << "from the start of the recording";
    EXPECT_EQ(events[2][1], "\"out\\\"er\\\\\\u0001\xC3\xA4\xEF\xBF\xBD<&>" + replaced + "\"");
    EXPECT_EQ(events[3][1], "\"\"");
    EXPECT_EQ(events[0][4], "1");
    EXPECT_EQ(events[3][4], "2");
    for (int i = 1; i < 3; ++i) { // each lies within the one before
        auto const at = [&](int number, int group) {
            return std::stod(events[static_cast<std::size_t>(number)][static_cast<std::size_t>(group)]);
        };
        EXPECT_LE(at(i, 2), at(i + 1, 2));
        EXPECT_GE(at(i, 2) + at(i, 3) + 0.002, at(i + 1, 2) + at(i + 1, 3)); // each is cut to nanoseconds
    }

    EXPECT_TRUE(trace.WriteSVG(file.Path()));
    std::string const picture = file.Bytes();
    EXPECT_NE(picture.find("<title>out\"er\\\xEF\xBF\xBD\xC3\xA4\xEF\xBF\xBD&lt;&amp;&gt;" + replaced + " "),
              std::string::npos);
    for (char const* const row : {"y=\"0\"", "y=\"20\"", "y=\"40\"", "y=\"60\"", "height=\"80\""}) {
        EXPECT_NE(picture.find(row), std::string::npos) << row;
    }
}

TEST(VContextTrace, SaysWhenAFileCannotBeWritten) {
    VContextTrace trace;
    EXPECT_FALSE(trace.WriteSVG("/nowhere/x"));
    EXPECT_FALSE(trace.WriteTraceEvents(nullptr));
    ScratchFile const link;
    std::filesystem::create_symlink("/dev/full", link.Path());
    EXPECT_FALSE(trace.WriteTraceEvents(link.Path()));
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_TRUE(std::filesystem::is_symlink(link.Path())) << "only a file is removed";
}

} // namespace
