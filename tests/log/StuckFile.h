#pragma once

#include "tests/support/ScratchFile.h"

#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace testing_support {

/// A pipe in the place of a log file: who writes to it is stuck once the system's buffer is full, until somebody
/// reads.
class StuckFile {
  public:
    StuckFile() {
        EXPECT_EQ(::mkfifo(m_file.Path(), 0600), 0);
        m_reader = ::open(m_file.Path(), O_RDONLY | O_NONBLOCK);
        EXPECT_GE(m_reader, 0);
    }
    StuckFile(StuckFile const&) = delete;
    StuckFile& operator=(StuckFile const&) = delete;
    ~StuckFile() { ::close(m_reader); }

    char const* Path() const { return m_file.Path(); }
    /// Everything until the writer closes its end.
    std::string ReadAll() const {
        ::fcntl(m_reader, F_SETFL, 0);
        std::string text;
        char bytes[4096];
        for (ssize_t count = 0; (count = ::read(m_reader, bytes, sizeof bytes)) > 0;) {
            text.append(bytes, static_cast<std::size_t>(count));
        }
        return text;
    }

  private:
    ScratchFile m_file;
    int m_reader = -1;
};

} // namespace testing_support
