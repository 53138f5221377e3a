#pragma once

#include <unistd.h>
#include <utility>

namespace Launcher {

/// A file descriptor with one owner, which closes it.
///
/// Ownership: the descriptor given to the constructor is adopted; `Get` lends it.
/// Threads: one thread at a time.
class UniqueFd {
  public:
    UniqueFd() = default;
    explicit UniqueFd(int descriptor) : m_descriptor(descriptor) {}
    UniqueFd(UniqueFd&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        if (this != &other) {
            Close();
            m_descriptor = std::exchange(other.m_descriptor, -1);
        }
        return *this;
    }
    UniqueFd(UniqueFd const&) = delete;
    UniqueFd& operator=(UniqueFd const&) = delete;
    ~UniqueFd() { Close(); }

    int Get() const { return m_descriptor; }
    bool IsOpen() const { return m_descriptor >= 0; }

    void Close() {
        if (m_descriptor >= 0) {
            ::close(std::exchange(m_descriptor, -1));
        }
    }

  private:
    int m_descriptor = -1;
};

} // namespace Launcher
