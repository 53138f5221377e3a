#pragma once

#include "foundation/graph/VGraph.h"

#include <vector>

namespace VFoundation {

/// Finds nodes by id for as long as neither the array nor its nodes' ids change: for work that looks up both ends of
/// every edge. Of nodes with the same id it finds the first in the array, as `VGraph::NodeForID`. Not for clients.
///
/// Ownership: borrows the nodes.
/// Threads: one thread at a time.
class NodeIndex {
  public:
    explicit NodeIndex(VGraph::NodeArray const& nodes);

    /// Borrowed; null when there is none.
    VGraphNode* Find(long id) const;

  private:
    struct Entry {
        long id;
        VGraphNode* node;
    };
    std::vector<Entry> m_entries; // by id, in the array's order where ids are equal
};

} // namespace VFoundation
