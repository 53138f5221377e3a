#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

namespace VFoundation {

/// A file that lines are written to, and that knows which of them the system has taken. Lines gather in the stream's
/// buffer until it is full, `Flush` or the end of the process. When the system refuses a part of them, those that it
/// did not take whole are lost and counted, and the piece of a line that it took is cut off again.
/// Internal.
///
/// Threads: one at a time; `LostLines` from any thread.
class LineFile {
  public:
    LineFile() = default;
    LineFile(LineFile const&) = delete;
    LineFile& operator=(LineFile const&) = delete;
    ~LineFile() { Close(); }

    /// Opens a file for writing, emptied. False when the system refuses and when memory runs out.
    bool Open(char const* path);
    /// Opens another file in the place of the open one, which is closed. False, and the same file is open, when the
    /// system refuses.
    bool Replace(char const* path);
    /// Bytes, with those that have gathered.
    long long Size() const noexcept { return m_start + static_cast<long long>(m_bytes); }
    bool IsOpen() const noexcept { return m_stream != nullptr; }
    /// Writes a line as it is. The file is open.
    void Put(char const* line);
    /// Hands what has gathered to the system.
    void Flush();
    /// Nothing when no file is open.
    void Close();
    /// Closes the file of a child process without writing what has gathered, which is the parent's.
    void Abandon();

    long LostLines() const noexcept { return m_lost.load(std::memory_order_relaxed); }

  private:
    static constexpr std::size_t kBytes = 16384;
    static constexpr std::size_t kLines = 256;

    /// What has gathered: the stream's buffer, and where each line in it ends.
    struct Buffer {
        char bytes[kBytes];
        std::array<std::size_t, kLines> lineEnds;
    };

    void Begin(std::FILE* stream) noexcept;
    void TakeStock();
    void Lose(std::size_t lines) noexcept {
        m_lost.fetch_add(static_cast<long>(lines), std::memory_order_relaxed);
    }

    // The system's part (LineFile_linux.cpp, LineFile_posix.cpp).

    /// Forgets what the stream has not written. The result is the place in the file that writing has come to, or -1.
    static long long DropUnwritten(std::FILE* stream) noexcept;
    /// Makes the file end at `place` if it ends at `end` now, and writing go on from there.
    static void CutBack(std::FILE* stream, long long end, long long place) noexcept;

    std::FILE* m_stream = nullptr;
    std::unique_ptr<Buffer> m_buffer;
    std::size_t m_lines = 0; // in the buffer
    std::size_t m_bytes = 0; // in the buffer, or more if its one line is longer
    long long m_start = 0;   // of the buffer in the file
    bool m_failed = false;
    std::atomic<long> m_lost{0}; // relaxed: a statistic
};

} // namespace VFoundation
