#include "foundation/graph/internal/NodeIndex.h"

#include "foundation/containers/internal/VObjectCast.h"

#include <algorithm>

namespace VFoundation {

NodeIndex::NodeIndex(VGraph::NodeArray const& nodes) {
    m_entries.reserve(static_cast<std::size_t>(nodes.Count()));
    for (long i = 0; i < nodes.Count(); ++i) {
        if (auto* const node = VObjectCast<VGraphNode>(nodes.ObjectAtIndex(i))) {
            m_entries.push_back({node->NodeID(), node});
        }
    }
    auto const byID = [](Entry const& a, Entry const& b) { return a.id < b.id; };
    if (!std::is_sorted(m_entries.begin(), m_entries.end(), byID)) {
        std::stable_sort(m_entries.begin(), m_entries.end(), byID);
    }
}

VGraphNode* NodeIndex::Find(long id) const {
    if (m_entries.empty() || id < m_entries.front().id || id > m_entries.back().id) {
        return nullptr;
    }
    // Ids that were assigned without a gap tell their place.
    auto const guess = static_cast<std::size_t>(id - m_entries.front().id);
    if (guess < m_entries.size() && m_entries[guess].id == id &&
        (guess == 0 || m_entries[guess - 1].id != id)) {
        return m_entries[guess].node;
    }
    auto const found = std::lower_bound(m_entries.begin(), m_entries.end(), id,
                                        [](Entry const& entry, long wanted) { return entry.id < wanted; });
    return found->id == id ? found->node : nullptr;
}

} // namespace VFoundation
