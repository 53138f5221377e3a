#pragma once

#include "foundation/core/Export.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace VFoundation {

/// What loading passed over or could not make, though its result says nothing of it. `VXMLFile` and `VAIFile` keep one
/// from the opening of a document or file until the next; the loading of containers, archives, graphs and objects adds
/// to it.
///
///     if (file.OpenFileForRead(path, "Settings") && file.ReadObject("items", items) && file.Report().IsEmpty()) {
///         // everything that the file holds is there: saving it again loses nothing
///     }
///
/// Everything is counted; the first `kMostEntries` are listed.
///
/// Ownership: a value.
/// Threads: one thread at a time.
class VFOUNDATION_API LoadReport {
  public:
    enum eLoss : int {
        /// A class that is not registered (`RegisterClasses`). The class that sorts last is not found by name.
        kUnknownClass = 0,
        /// A class that makes no objects, no memory for one, or half of a pair.
        kNotMade = 1,
        /// An object whose own reading returned false; a length or a chunk that goes beyond what the file holds.
        kNotRead = 2,
        /// Another number of elements than the container says. It counts the null elements that are never saved.
        kCountDiffers = 3,
        /// A chunk or an object of another kind than expected there.
        kWrongKind = 4
    };
    static constexpr int kLosses = 5;
    static constexpr std::size_t kMostEntries = 100;

    struct Entry {
        eLoss loss;
        /// In XML the elements from the root on, as "Settings/VObjectArray[2]"; in a chunked file the offset in bytes.
        std::string position;
        /// The class, the chunk's id, or both counts.
        std::string detail;
        /// In XML where the element begins in the text, both from 1, the column in bytes; else 0.
        unsigned long line = 0;
        unsigned long column = 0;
    };

    bool IsEmpty() const noexcept { return Count() == 0; }
    unsigned long Count() const noexcept;
    unsigned long Count(eLoss loss) const noexcept { return m_counts[static_cast<std::size_t>(loss)]; }
    /// In the order of loading.
    std::vector<Entry> const& Entries() const noexcept { return m_entries; }
    /// One line for each entry.
    std::string AsText() const;
    /// "<position>: <what> (<detail>)", in XML "<position> at line <line>, column <column>: <what> (<detail>)".
    static std::string TextOf(Entry const& entry);

    /// Two counts as the detail of `kCountDiffers`: "5, found 3".
    static std::string Counts(long expected, long found);

    void Clear() noexcept;
    /// Counts one. True when it is also to be listed, with `List`.
    bool Add(eLoss loss) noexcept;
    /// Without memory it stays unlisted.
    void List(eLoss loss, std::string position, char const* detail, unsigned long line = 0,
              unsigned long column = 0) noexcept;

  private:
    std::array<unsigned long, kLosses> m_counts{};
    std::vector<Entry> m_entries;
};

} // namespace VFoundation
