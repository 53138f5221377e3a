#pragma once

#include "foundation/containers/VObjectContainer.h"
#include "foundation/containers/internal/SlotBlock.h"

namespace VFoundation {

/// The elements that a container holds at one moment, for walks that call other code: whatever happens to the
/// container meanwhile, the walk sees each of them once, and it ends.
///
/// Ownership: retains the elements.
/// Threads: takes the container's lock, if there is one, while it is filled, and not for longer.
class Snapshot {
  public:
    /// Throws `VException` with id 1 when memory runs out.
    explicit Snapshot(VObjectContainer const& container);
    Snapshot(Snapshot const&) = delete;
    Snapshot& operator=(Snapshot const&) = delete;
    ~Snapshot();

    VObject* const* begin() const noexcept { return m_count > 0 ? m_block->Slots() : nullptr; }
    VObject* const* end() const noexcept { return begin() + m_count; }

  private:
    Snapshot() noexcept = default;

    VObjectRef<detail::SlotBlock> m_block;
    long m_count = 0;
};

} // namespace VFoundation
