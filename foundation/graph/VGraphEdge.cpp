#include "foundation/graph/VGraphEdge.h"

#include "foundation/core/NarrowCast.h"
#include "foundation/core/internal/CopyByAssignment.h"
#include "foundation/persistence/VXMLFile.h"

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
    m_node1.Exchange(first);
    m_node2.Exchange(second);
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
