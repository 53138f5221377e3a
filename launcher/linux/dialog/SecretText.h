#pragma once

#include <array>
#include <cstring>
#include <string_view>

namespace Launcher {

/// A short text that is wiped when it is no longer needed, and never copied.
///
/// Threads: one thread at a time.
class SecretText {
  public:
    static constexpr std::size_t kMaxLength = 1023; ///< bytes

    SecretText() = default;
    SecretText(SecretText const&) = delete;
    SecretText& operator=(SecretText const&) = delete;
    ~SecretText() { Wipe(); }

    /// False, and empty, when the text is too long.
    bool Set(std::string_view text) {
        Wipe();
        if (text.size() > kMaxLength) {
            return false;
        }
        std::memcpy(m_bytes.data(), text.data(), text.size());
        m_length = text.size();
        return true;
    }

    char const* CString() const { return m_bytes.data(); }
    std::size_t Length() const { return m_length; }

    void Wipe() {
        ::explicit_bzero(m_bytes.data(), m_bytes.size());
        m_length = 0;
    }

  private:
    std::array<char, kMaxLength + 1> m_bytes{};
    std::size_t m_length = 0;
};

} // namespace Launcher
