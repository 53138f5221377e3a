#include "foundation/containers/internal/SlotBlock.h"

#include "foundation/core/VException.h"

#include <algorithm>
#include <new>
#include <utility>

namespace VFoundation::detail {

namespace {

/// The releases that run inside each other on this thread, and the blocks that wait for the innermost of them.
struct Nesting {
    int depth = 0;
    SlotBlock* waiting = nullptr; // the next one first
};
constinit thread_local Nesting s_nesting;

} // namespace

VObjectRef<SlotBlock> SlotBlock::OfCapacity(long slots, VObject const& owner) {
    try {
        auto block = VObjectRef<SlotBlock>::Adopt(new SlotBlock);
        block->SetCapacity(slots);
        return block;
    } catch (std::bad_alloc const&) {
        throw VException(VException::eOutOfMemory, &owner, "Error allocating container slots", -1);
    }
}

void SlotBlock::SetCapacity(long slots) {
    long const former = Capacity();
    SetLength(static_cast<unsigned long>(slots) * sizeof(void*), true);
    if (slots > former) {
        std::fill(Slots() + former, Slots() + slots, nullptr);
    }
}

/// One release on the stack. At the greatest depth it serves the blocks that wait, the last to come first: that is the
/// order of a release without a limit.
class SlotBlock::Releaser {
  public:
    Releaser(VObject** slots, long first, long last) noexcept : m_slots(slots), m_next(first), m_last(last) {
        ++s_nesting.depth;
    }
    Releaser(Releaser const&) = delete;
    Releaser& operator=(Releaser const&) = delete;
    /// Releases what an exception left.
    ~Releaser() {
        while (HasNext()) {
            try {
                ReleaseNext();
            } catch (...) { // the first exception is on its way already
            }
        }
        --s_nesting.depth;
    }

    bool HasNext() const noexcept { return ServesWaiting() || m_next < m_last; }

    void ReleaseNext() {
        if (!ServesWaiting()) {
            Release(m_slots[m_next++]);
            return;
        }
        SlotBlock* const block = s_nesting.waiting;
        long const slot = block->m_first++;
        VObjectRef<SlotBlock> finished;
        if (block->m_first == block->m_last) {
            s_nesting.waiting = block->m_nextWaiting;
            finished = VObjectRef<SlotBlock>::Adopt(block);
        }
        Release(block->Slots()[slot]);
    }

  private:
    static bool ServesWaiting() noexcept { return s_nesting.depth == kMaxDepth && s_nesting.waiting; }

    static void Release(VObject*& slot) {
        if (VObject const* const element = std::exchange(slot, nullptr)) {
            element->Release();
        }
    }

    VObject** m_slots;
    long m_next;
    long m_last;
};

void SlotBlock::ReleaseElements(VObjectRef<SlotBlock>& block, long first, long last) {
    if (first >= last) {
        return;
    }
    if (s_nesting.depth == kMaxDepth) {
        block->m_first = first;
        block->m_last = last;
        block->m_nextWaiting = s_nesting.waiting;
        s_nesting.waiting = block.Detach();
        return;
    }
    Releaser releaser(block->Slots(), first, last);
    while (releaser.HasNext()) {
        releaser.ReleaseNext();
    }
}

} // namespace VFoundation::detail
