#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace VFoundation {

class VClass;

/// An immutable table from class name to record, read without a lock. It gives exactly the answers of the
/// binary search that it is filled from: a class that the search cannot find is not in it.
class ClassNameIndex {
  public:
    /// Room for `count` names.
    explicit ClassNameIndex(std::size_t count);
    /// Only while no other thread reads.
    void Insert(VClass* record);
    VClass* Find(char const* name) const noexcept;

  private:
    struct Entry {
        std::size_t hash = 0;
        std::string_view name; // the record's
        VClass* record = nullptr;
    };

    std::size_t m_mask;
    std::unique_ptr<Entry[]> m_entries;
};

} // namespace VFoundation
