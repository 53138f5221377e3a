#pragma once

#include <csignal>
#include <sys/resource.h>

namespace testing_support {

/// While it lives, this process cannot write any file beyond so many bytes.
class FullDisk {
  public:
    explicit FullDisk(::rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        struct rlimit const full{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
    }
    FullDisk(FullDisk const&) = delete;
    FullDisk& operator=(FullDisk const&) = delete;
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

  private:
    void (*m_handler)(int);
    struct rlimit m_before {};
};

} // namespace testing_support
