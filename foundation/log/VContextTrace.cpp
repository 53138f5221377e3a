#include "foundation/log/VContextTrace.h"

#include "foundation/host/VFile.h"
#include "foundation/log/internal/ContextTraceHook.h"
#include "foundation/log/internal/MonotonicClock.h"
#include "foundation/log/internal/UTF8Text.h"
#include "foundation/threads/VThread.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <new>
#include <system_error>
#include <tuple>
#include <utility>

namespace VFoundation {

namespace {

/// The trace that records. Under the lock, so that it does not go while a context reaches it.
constinit detail::Mutex s_lock;
constinit VContextTrace* s_recording VFOUNDATION_GUARDED_BY(s_lock) = nullptr;
constinit std::atomic<bool> s_isRecording{false}; // relaxed: the trace is read under the lock

std::uint64_t Now() noexcept {
    ClockTimeBase const base = ReadMonotonicTimeBase();
    return ReadMonotonicClock() * base.numerator / base.denominator;
}

/// Nanoseconds as microseconds with three decimals, whatever the locale.
std::string Microseconds(std::uint64_t nanoseconds) {
    char text[40];
    std::snprintf(text, sizeof text, "%" PRIu64 ".%03u", nanoseconds / 1000,
                  static_cast<unsigned>(nanoseconds % 1000));
    return text;
}

/// Writes a file whole or removes it.
class OutputFile {
  public:
    explicit OutputFile(char const* path) : m_path(path) {
        errno = EINVAL; // for a null path
        m_file = VFile::vfc_fopen(path, "w");
    }
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    ~OutputFile() { Finish(false); }

    void Put(std::string const& text) {
        if (m_file && m_error == 0 && std::fputs(text.c_str(), m_file) < 0) {
            m_error = errno;
        }
    }
    bool Finish(bool isWhole = true) {
        if (!m_file) {
            return false;
        }
        if (std::fclose(std::exchange(m_file, nullptr)) != 0 && m_error == 0) {
            m_error = errno;
        }
        if (!isWhole || m_error != 0) {
            std::error_code error;
            if (std::filesystem::is_regular_file(std::filesystem::symlink_status(m_path, error))) {
                std::filesystem::remove(m_path, error);
            }
            errno = m_error;
            return false;
        }
        return true;
    }

  private:
    char const* m_path;
    std::FILE* m_file = nullptr;
    int m_error = 0;
};

} // namespace

void ContextTraceHook::ContextEnded(char const* name, double elapsedSeconds) noexcept {
    if (!s_isRecording.load(std::memory_order_relaxed)) {
        return;
    }
    std::uint64_t const end = Now();
    auto const elapsed = static_cast<std::uint64_t>(elapsedSeconds * 1e9);
    detail::MutexLock const lock(s_lock);
    if (s_recording) {
        s_recording->Record(name, end - std::min(elapsed, end), end);
    }
}

VContextTrace::~VContextTrace() {
    Stop();
}

bool VContextTrace::Start() {
    detail::MutexLock const lock(s_lock);
    if (s_recording) {
        return false;
    }
    detail::MutexLock const own(m_lock);
    m_sections.clear();
    m_threads.clear();
    m_dropped = 0;
    m_start = Now();
    s_recording = this;
    s_isRecording.store(true, std::memory_order_relaxed);
    return true;
}

void VContextTrace::Stop() {
    detail::MutexLock const lock(s_lock);
    if (s_recording == this) {
        s_recording = nullptr;
        s_isRecording.store(false, std::memory_order_relaxed);
    }
}

void VContextTrace::Record(char const* name, std::uint64_t start, std::uint64_t end) noexcept {
    auto const mark = static_cast<std::uintptr_t>(VThread::GetCurrentThreadID());
    detail::MutexLock const lock(m_lock);
    try {
        if (m_sections.size() < kMostContexts) {
            auto thread = std::find(m_threads.begin(), m_threads.end(), mark);
            if (thread == m_threads.end()) {
                thread = m_threads.insert(thread, mark);
            }
            std::uint64_t const from = std::max(start, m_start);
            m_sections.push_back(
                {name, from - m_start, end - from, static_cast<int>(thread - m_threads.begin()) + 1});
            return;
        }
    } catch (std::bad_alloc const&) { // as if there were too many
    }
    ++m_dropped;
}

long VContextTrace::ContextCount() const {
    detail::MutexLock const lock(m_lock);
    return static_cast<long>(m_sections.size());
}

long VContextTrace::DroppedContexts() const {
    detail::MutexLock const lock(m_lock);
    return m_dropped;
}

/// By thread, then by start; of those that start together the outermost first.
std::vector<VContextTrace::Section> VContextTrace::Sorted() const {
    std::vector<Section> sections;
    {
        detail::MutexLock const lock(m_lock);
        sections = m_sections;
    }
    std::stable_sort(sections.begin(), sections.end(), [](Section const& a, Section const& b) {
        return std::tuple(a.thread, a.start, b.duration) < std::tuple(b.thread, b.start, a.duration);
    });
    return sections;
}

bool VContextTrace::WriteTraceEvents(char const* path) const {
    auto const sections = Sorted();
    OutputFile file(path);
    file.Put("{\"displayTimeUnit\":\"ms\",\"traceEvents\":[");
    char const* separator = "\n";
    for (Section const& section : sections) {
        file.Put(separator + ("{\"name\":\"" + AsJSON(section.name)) +
                 "\",\"cat\":\"context\",\"ph\":\"X\",\"ts\":" + Microseconds(section.start) +
                 ",\"dur\":" + Microseconds(section.duration) +
                 ",\"pid\":1,\"tid\":" + std::to_string(section.thread) + "}");
        separator = ",\n";
    }
    file.Put("\n]}\n");
    return file.Finish();
}

bool VContextTrace::WriteSVG(char const* path) const {
    constexpr std::uint64_t kWidth = 1200;
    constexpr std::size_t kRowHeight = 20;
    constexpr std::size_t kWidthOfLetter = 7;

    auto const sections = Sorted();
    std::uint64_t last = 1;
    for (Section const& section : sections) {
        last = std::max(last, section.start + section.duration);
    }
    std::string boxes;
    std::vector<std::uint64_t> openEnds; // of the sections around this one
    int thread = 0;
    std::size_t firstRow = 0;
    std::size_t rows = 0;
    for (Section const& section : sections) {
        if (std::exchange(thread, section.thread) != section.thread) {
            openEnds.clear();
            firstRow = rows;
        }
        std::uint64_t const end = section.start + section.duration;
        while (!openEnds.empty() && openEnds.back() < end) {
            openEnds.pop_back();
        }
        std::size_t const row = firstRow + openEnds.size();
        openEnds.push_back(end);
        rows = std::max(rows, row + 1);
        auto const place = [last](std::uint64_t time) {
            return static_cast<std::uint64_t>(static_cast<double>(kWidth) * static_cast<double>(time) /
                                              static_cast<double>(last));
        };
        std::uint64_t const x = place(section.start);
        std::uint64_t const width = std::max<std::uint64_t>(place(end) - x, 1);
        std::string const y = std::to_string(row * kRowHeight);
        std::string const box = "x=\"" + std::to_string(x) + "\" y=\"" + y + "\" width=\"" +
                                std::to_string(width) + "\" height=\"" + std::to_string(kRowHeight - 1) +
                                "\"";
        std::string const title = AsXML(section.name) + " " + Microseconds(section.duration) +
                                  " us, thread " + std::to_string(section.thread);
        boxes += "<g><title>" + title + "</title><rect " + box + " fill=\"" +
                 (row % 2 == 0 ? "#9ecae1" : "#c6dbef") + "\" stroke=\"white\"/>";
        if (width / kWidthOfLetter > 2) {
            boxes += "<svg " + box + "><text x=\"3\" y=\"14\">" + AsXML(section.name) + "</text></svg>";
        }
        boxes += "</g>\n";
    }
    std::string const width = std::to_string(kWidth);
    std::string const height = std::to_string(std::max<std::size_t>(rows, 1) * kRowHeight);
    OutputFile file(path);
    file.Put("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + width + "\" height=\"" + height +
             "\" viewBox=\"0 0 " + width + " " + height +
             "\" font-family=\"sans-serif\" font-size=\"12\">\n"
             "<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n" +
             boxes + "</svg>\n");
    return file.Finish();
}

} // namespace VFoundation
