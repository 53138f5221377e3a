#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

namespace vfinspect {

/// What was found in a file: its parts as a tree, what is damaged, and what can be extracted.
///
/// Its memory is bounded, whatever the file claims: beyond `kMaxEntries`, `kMaxProblems` and `kMaxParts` things are
/// counted and not kept. Texts that are given to it must be printable (Text.h).
class Report {
  public:
    static constexpr std::size_t kMaxEntries = 50'000;
    static constexpr std::size_t kMaxProblems = 100;
    static constexpr std::size_t kMaxParts = 10'000;

    struct Entry {
        int depth;
        std::uint64_t offset;
        std::uint64_t length;
        std::string label;
        std::string value; // may be empty
    };
    struct Problem {
        std::uint64_t offset;
        std::string reason;
    };
    /// Bytes that are a file of their own.
    struct Part {
        std::string name; // as the file has it, not printable
        std::uint64_t offset;
        std::uint64_t length;
    };

    /// An entry whose length is known once its children were added.
    void Open(std::uint64_t offset, std::string label, std::string value = {});
    /// Ends the innermost open entry at `end`.
    void Close(std::uint64_t end);
    /// Sets the value of the innermost open entry.
    void SetValue(std::string value);
    void Add(std::uint64_t offset, std::uint64_t length, std::string label, std::string value = {});
    void AddProblem(std::uint64_t offset, std::string reason);
    void AddPart(std::string name, std::uint64_t offset, std::uint64_t length);
    void SetKind(std::string kind) { m_kind = std::move(kind); }

    std::string const& Kind() const noexcept { return m_kind; }
    std::vector<Entry> const& Entries() const noexcept { return m_entries; }
    std::vector<Problem> const& Problems() const noexcept { return m_problems; }
    std::vector<Part> const& Parts() const noexcept { return m_parts; }
    std::uint64_t EntryCount() const noexcept { return m_entryCount; }
    std::uint64_t ProblemCount() const noexcept { return m_problemCount; }

    // Each writes lines that name the file, whose name has to be printable.
    void PrintTree(std::ostream& out, std::string const& file, std::uint64_t size) const;
    void PrintProblems(std::ostream& out, std::string const& file) const;
    /// One object on one line.
    void PrintJson(std::ostream& out, std::string const& file, std::uint64_t size) const;

  private:
    std::string m_kind;
    std::vector<Entry> m_entries;
    std::vector<Problem> m_problems;
    std::vector<Part> m_parts;
    std::vector<std::size_t> m_open; // indices of entries, kMaxEntries for one that was not kept
    std::uint64_t m_entryCount = 0;
    std::uint64_t m_problemCount = 0;
};

} // namespace vfinspect
