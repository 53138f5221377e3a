#include "tools/vfinspect/Report.h"

#include "tools/vfinspect/Text.h"

#include <iomanip>
#include <ostream>
#include <utility>

namespace vfinspect {

namespace {

std::string JsonString(std::string const& printable) {
    std::string result = "\"";
    for (char const c : printable) {
        result += c == '"' || c == '\\' ? "\\" : "";
        result += c;
    }
    return result + '"';
}

} // namespace

void Report::Add(std::uint64_t offset, std::uint64_t length, std::string label, std::string value) {
    ++m_entryCount;
    if (m_entries.size() < kMaxEntries) {
        m_entries.push_back(
            {static_cast<int>(m_open.size()), offset, length, std::move(label), std::move(value)});
    }
}

void Report::Open(std::uint64_t offset, std::string label, std::string value) {
    std::size_t const index = m_entries.size();
    Add(offset, 0, std::move(label), std::move(value));
    m_open.push_back(index);
}

void Report::Close(std::uint64_t end) {
    std::size_t const index = m_open.back();
    m_open.pop_back();
    if (index < kMaxEntries) {
        m_entries[index].length = end - m_entries[index].offset;
    }
}

void Report::SetValue(std::string value) {
    if (m_open.back() < kMaxEntries) {
        m_entries[m_open.back()].value = std::move(value);
    }
}

void Report::AddProblem(std::uint64_t offset, std::string reason) {
    ++m_problemCount;
    if (m_problems.size() < kMaxProblems) {
        m_problems.push_back({offset, std::move(reason)});
    }
}

void Report::AddPart(std::string name, std::uint64_t offset, std::uint64_t length) {
    if (m_parts.size() < kMaxParts) {
        m_parts.push_back({std::move(name), offset, length});
    }
}

void Report::PrintTree(std::ostream& out, std::string const& file, std::uint64_t size) const {
    out << file << ": " << m_kind << ", " << Counted(size, "byte") << '\n';
    for (Entry const& entry : m_entries) {
        out << std::setw(10) << entry.offset << ' ' << std::setw(10) << entry.length << "  "
            << std::string(2 * static_cast<std::size_t>(entry.depth), ' ') << entry.label;
        out << (entry.value.empty() ? "" : ": ") << entry.value << '\n';
    }
    if (m_entryCount > m_entries.size()) {
        out << std::string(23, ' ') << "and " << m_entryCount - m_entries.size() << " more\n";
    }
    PrintProblems(out, file);
}

void Report::PrintProblems(std::ostream& out, std::string const& file) const {
    for (Problem const& problem : m_problems) {
        out << file << ": damaged at " << problem.offset << ": " << problem.reason << '\n';
    }
    if (m_problemCount > m_problems.size()) {
        out << file << ": and " << m_problemCount - m_problems.size() << " more\n";
    }
}

void Report::PrintJson(std::ostream& out, std::string const& file, std::uint64_t size) const {
    out << "{\"file\":" << JsonString(file) << ",\"kind\":" << JsonString(m_kind) << ",\"size\":" << size
        << ",\"entries\":[";
    char const* separator = "";
    for (Entry const& entry : m_entries) {
        out << std::exchange(separator, ",") << "{\"depth\":" << entry.depth << ",\"offset\":" << entry.offset
            << ",\"length\":" << entry.length << ",\"label\":" << JsonString(entry.label);
        if (!entry.value.empty()) {
            out << ",\"value\":" << JsonString(entry.value);
        }
        out << '}';
    }
    out << "],\"entryCount\":" << m_entryCount << ",\"problems\":[";
    separator = "";
    for (Problem const& problem : m_problems) {
        out << std::exchange(separator, ",") << "{\"offset\":" << problem.offset
            << ",\"reason\":" << JsonString(problem.reason) << '}';
    }
    out << "],\"problemCount\":" << m_problemCount << "}\n";
}

} // namespace vfinspect
