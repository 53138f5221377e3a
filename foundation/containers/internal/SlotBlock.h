#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VData.h"

namespace VFoundation::detail {

/// The memory behind the slots of a container, and the way that elements leave one: a container gives up the whole
/// block first and releases what it holds then, so that destructors find the container empty and may use it.
///
/// Ownership: by reference count. The block does not own what its slots point to.
/// Threads: one thread at a time.
class SlotBlock final : public VData {
  public:
    /// How many releases may run inside each other on one thread. Elements of containers that are nested deeper are
    /// released one after the other, so that the depth of a structure is not limited by the stack.
    static constexpr int kMaxDepth = 1000;

    /// A block of null slots for `owner`. Throws `VException` with id 1 when memory runs out.
    static VObjectRef<SlotBlock> OfCapacity(long slots, VObject const& owner);

    VObject** Slots() noexcept { return reinterpret_cast<VObject**>(Bytes()); }
    long Capacity() const noexcept { return static_cast<long>(Length() / sizeof(void*)); }
    /// New slots are null. Throws `VException` with id 1, the block unchanged, when memory runs out.
    void SetCapacity(long slots);

    /// Releases the elements of the slots from `first` to `last`, exclusive, in order, and makes the slots null. What
    /// an element throws is passed on after all are released; what further ones throw is lost. Allocates nothing.
    /// At the greatest depth the block is taken, `block` is null afterwards, and the elements are released as soon as
    /// the release that is running at that depth has returned from its element.
    static void ReleaseElements(VObjectRef<SlotBlock>& block, long first, long last);

  private:
    class Releaser;

    SlotBlock() : VData(nullptr, 0) {}

    SlotBlock* m_nextWaiting = nullptr; // while it waits for its turn
    long m_first = 0;
    long m_last = 0;
};

} // namespace VFoundation::detail
