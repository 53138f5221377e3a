#include "foundation/graph/VGraphEdge.h"

#include "foundation/containers/internal/KeepAlive.h"
#include "foundation/core/NarrowCast.h"
#include "foundation/core/internal/CopyByAssignment.h"
#include "foundation/persistence/VXMLFile.h"

#include <utility>

namespace VFoundation {

namespace {

std::int32_t IDOf(VGraphNode const* node) {
    return node ? narrow_cast<std::int32_t>(node->NodeID()) : VGraphEdge::kNoID;
}

/// An attribute that is absent leaves no id behind.
void SerializeID(VXMLFile& file, char const* name, std::int32_t& id) {
    long value = file.IsLoading() ? VGraphEdge::kNoID : id;
    file.SerializeAttribute(name, value);
    id = narrow_cast<std::int32_t>(value);
}

} // namespace

VClass* VGraphEdge::ms_theClass = nullptr;

VGraphEdge::VGraphEdge(VClass* cls) : Registered(cls) {
}

VGraphEdge::~VGraphEdge() = default;

VGraphEdge* VGraphEdge::New() {
    return new VGraphEdge;
}

VGraphEdge* VGraphEdge::Copy() const {
    return detail::CopyByAssignment(*this);
}

VGraphEdge& VGraphEdge::operator=(VGraphEdge const& other) {
    m_edgeID = other.m_edgeID;
    m_sourceNodeID = other.m_sourceNodeID;
    m_destinationNodeID = other.m_destinationNodeID;
    return *this;
}

bool VGraphEdge::SetNodes(VGraphNode* first, VGraphNode* second) {
    // Both new ends are held before an old one is released, which may be the last holder of a new one, and whose
    // destructor may use the edge.
    auto const alive = KeepAlive(*this);
    VObjectRef<VGraphNode> former1(first);
    VObjectRef<VGraphNode> former2(second);
    std::swap(m_node1, former1);
    std::swap(m_node2, former2);
    former1.Exchange(nullptr);
    former2.Exchange(nullptr);
    UpdateNodeIDs();
    return true;
}

VGraphNode* VGraphEdge::Node1() const {
    return m_node1.Get();
}

VGraphNode* VGraphEdge::Node2() const {
    return m_node2.Get();
}

void VGraphEdge::SetEdgeID(long id) {
    m_edgeID = narrow_cast<std::int32_t>(id);
}

long VGraphEdge::EdgeID() const {
    return m_edgeID;
}

void VGraphEdge::UpdateNodeIDs() {
    m_sourceNodeID = IDOf(m_node1.Get());
    m_destinationNodeID = IDOf(m_node2.Get());
}

bool VGraphEdge::SerializeAsXML(VXMLFile& file) {
    Registered::SerializeAsXML(file);
    if (!file.IsLoading()) {
        UpdateNodeIDs();
    }
    SerializeID(file, "srcNode_ID", m_sourceNodeID);
    SerializeID(file, "dstNode_ID", m_destinationNodeID);
    return file.IsValid();
}

} // namespace VFoundation
