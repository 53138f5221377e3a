#include "foundation/containers/internal/Snapshot.h"

#include "foundation/containers/internal/ContainerLock.h"

namespace VFoundation {

Snapshot::Snapshot(VObjectContainer const& container)
    : Snapshot() { // so that the destructor runs when this throws
    ContainerLock const lock(container.CriticalSection());
    long const count = container.Count();
    if (count <= 0) {
        return;
    }
    m_block = detail::SlotBlock::OfCapacity(count, container);
    for (VObject** slot = m_block->Slots(); m_count < count; ++m_count, ++slot) {
        VObject* const element = container.ObjectAtIndex(m_count);
        if (element) {
            element->Retain();
        }
        *slot = element;
    }
}

Snapshot::~Snapshot() {
    try {
        detail::SlotBlock::ReleaseElements(m_block, 0, m_count);
    } catch (...) { // an element's, and no concern of the walk
    }
}

} // namespace VFoundation
