#pragma once

#include "foundation/log/VLogFile.h"
#include "tests/support/Jobs.h"
#include "tests/support/ScratchFile.h"

#include <ctime>
#include <fcntl.h>
#include <semaphore.h>
#include <string>
#include <vector>

namespace log_test {

using namespace VFoundation;
using namespace testing_support;
using Lines = std::vector<std::string>;
using LogFileRef = VObjectRef<VLogFile>;

inline LogFileRef NewLog(char const* path) {
    return LogFileRef::Adopt(new VLogFile(path, nullptr));
}

/// The lines from `first` to before `end`, which are also added to `log` if there is one.
inline std::string Numbered(int first, int end, VLogFile* log = nullptr) {
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

inline std::string StandardErrorOf(VLogFile& log, char const* line) {
    testing::internal::CaptureStderr();
    log.AddString(line);
    return testing::internal::GetCapturedStderr();
}

/// What follows the date, which is the first line and has no line feed.
inline std::string AfterTheDate(std::string const& text) {
    std::tm date{};
    char const* const end = ::strptime(text.c_str(), "%a %b %e %H:%M:%S %Y", &date);
    EXPECT_EQ(end, text.c_str() + 24) << text.substr(0, 30);
    return text.substr(24);
}

// The semaphores belong to the whole system.

inline void ForgetSemaphores() {
    ::sem_unlink("VLogFile");
    ::sem_unlink("VLogFileShutdown");
}

/// In both semaphores, and more than the rounds of a shut-down.
inline void LeaveSignals() {
    ForgetSemaphores();
    for (char const* const name : {"VLogFile", "VLogFileShutdown"}) {
        ::sem_close(::sem_open(name, O_CREAT | O_EXCL, 0777, 40));
    }
}

} // namespace log_test
