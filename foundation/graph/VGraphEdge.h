#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/graph/VGraphNode.h"

#include <cstdint>

namespace VFoundation {

/// One edge of a `VGraph`, from its node 1 to its node 2. Either may be missing.
///
/// In memory an edge holds its nodes; in files, and in copies until a graph attaches them, only their ids. The ids
/// are those of the nodes when the edge last looked: `SetNodes` and `UpdateNodeIDs` look.
///
/// DELIBERATE: assignment copies the three ids, not the nodes; a copied edge has no ends until a graph gives it
/// some.
///
/// Ownership: retains its nodes.
/// Threads: one thread at a time for a whole graph.
class VFOUNDATION_API VGraphEdge : public Registered<VGraphEdge, VObject> {
  public:
    static constexpr char const* kClassName = "VGraphEdge";
    static VClass* ms_theClass;

    static constexpr std::int32_t kNoID = -1;

    explicit VGraphEdge(VClass* cls = nullptr);
    VGraphEdge(VGraphEdge const&) = delete;
    ~VGraphEdge() override;
    [[nodiscard]] static VGraphEdge* New();

    /// A new edge (owned) of the same class, assigned from this one; null when the class has no factory.
    [[nodiscard]] VGraphEdge* Copy() const override;
    /// The attributes "srcNode_ID" and "dstNode_ID"; one that is absent reads as -1. Loading leaves the nodes alone.
    bool SerializeAsXML(VXMLFile& file) override;

    virtual VGraphEdge& operator=(VGraphEdge const& other);

    /// Sets both ends (retained), each of which may be null, and their ids. True.
    virtual bool SetNodes(VGraphNode* first, VGraphNode* second);
    /// Borrowed, or null.
    virtual VGraphNode* Node1() const;
    virtual VGraphNode* Node2() const;

    /// 32 bits are kept; -1 at first. Files hold no edge ids.
    virtual void SetEdgeID(long id);
    virtual long EdgeID() const;

    /// Takes the ids of the nodes as they are now; -1 for a missing node.
    virtual void UpdateNodeIDs();
    long SourceNodeID() const noexcept { return m_sourceNodeID; }
    long DestinationNodeID() const noexcept { return m_destinationNodeID; }

  private:
    friend class VGraph;

    /// As `SetNodes`, for a copy without ends that notes the ids of these nodes already.
    void Attach(VGraphNode& first, VGraphNode& second) {
        m_node1.Exchange(&first);
        m_node2.Exchange(&second);
    }

    VObjectRef<VGraphNode> m_node1;
    VObjectRef<VGraphNode> m_node2;
    std::int32_t m_edgeID = kNoID;
    std::int32_t m_sourceNodeID = kNoID;
    std::int32_t m_destinationNodeID = kNoID;
};

} // namespace VFoundation
