#pragma once

#include "foundation/core/Export.h"

#include <cstddef>
#include <iterator>
#include <type_traits>

namespace VFoundation {

/// Goes through a container by index, so that a loop may change the container: it ends at the count of that moment,
/// and sees what stands at each index when it comes there. `Get` is the member that gives the element at an index.
///
/// Ownership: borrows the container.
/// Threads: as the container.
template <class Container, auto Get>
class VFOUNDATION_API IndexIterator {
  public:
    using value_type = std::invoke_result_t<decltype(Get), Container const&, long>;
    using difference_type = std::ptrdiff_t;
    using iterator_concept = std::input_iterator_tag;

    IndexIterator() noexcept = default;
    explicit IndexIterator(Container const& container) noexcept : m_container(&container) {}

    value_type operator*() const { return (m_container->*Get)(m_index); }
    IndexIterator& operator++() noexcept {
        ++m_index;
        return *this;
    }
    void operator++(int) noexcept { ++m_index; }
    /// True past the last element.
    friend bool operator==(IndexIterator const& it, std::default_sentinel_t) {
        return it.m_index >= it.m_container->Count();
    }

  private:
    Container const* m_container = nullptr;
    long m_index = 0;
};

} // namespace VFoundation
