#pragma once

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/Export.h"

namespace VFoundation {

/// An object that carries an array meant as a queue. It has no operations: work on the array.
///
/// Ownership: the array retains its elements and dies with the queue.
/// Threads: one at a time.
class VFOUNDATION_API VObjectQueue : public Registered<VObjectQueue, VObject> {
  public:
    static constexpr char const* kClassName = "VObjectQueue";
    static VClass* ms_theClass;

    explicit VObjectQueue(VClass* cls = nullptr);
    VObjectQueue& operator=(VObjectQueue const&) = delete;
    [[nodiscard]] static VObjectQueue* New() { return new VObjectQueue; }

    VObjectArray& Array() noexcept { return m_array; }
    VObjectArray const& Array() const noexcept { return m_array; }

    /// For a range-for over the array.
    VObjectArray::Iterator begin() const noexcept { return m_array.begin(); }
    static std::default_sentinel_t end() noexcept { return {}; }

  private:
    VObjectArray m_array{nullptr, 0};
};

} // namespace VFoundation
