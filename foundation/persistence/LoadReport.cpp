#include "foundation/persistence/LoadReport.h"

#include <exception>
#include <numeric>
#include <utility>

namespace VFoundation {

unsigned long LoadReport::Count() const noexcept {
    return std::accumulate(m_counts.begin(), m_counts.end(), 0UL);
}

std::string LoadReport::TextOf(Entry const& entry) {
    static constexpr std::array<char const*, kLosses> kTexts{"unknown class", "not made", "not read",
                                                             "count differs", "wrong kind"};
    std::string const place =
        entry.line > 0 ? " at line " + std::to_string(entry.line) + ", column " + std::to_string(entry.column)
                       : "";
    return entry.position + place + ": " + kTexts[static_cast<std::size_t>(entry.loss)] + " (" +
           entry.detail + ")";
}

std::string LoadReport::AsText() const {
    std::string text;
    for (Entry const& entry : m_entries) {
        text += TextOf(entry) + "\n";
    }
    return text;
}

std::string LoadReport::Counts(long expected, long found) {
    return std::to_string(expected) + ", found " + std::to_string(found);
}

void LoadReport::Clear() noexcept {
    m_counts = {};
    m_entries.clear();
}

bool LoadReport::Add(eLoss loss) noexcept {
    ++m_counts[static_cast<std::size_t>(loss)];
    return m_entries.size() < kMostEntries;
}

void LoadReport::List(eLoss loss, std::string position, char const* detail, unsigned long line,
                      unsigned long column) noexcept {
    try {
        m_entries.push_back({loss, std::move(position), detail ? detail : "", line, column});
    } catch (std::exception const&) {
        // counted already
    }
}

} // namespace VFoundation
