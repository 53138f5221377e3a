#include "foundation/graph/VGraphNode.h"

#include "foundation/containers/internal/ClassString.h"
#include "foundation/containers/internal/VObjectCast.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/core/internal/CopyByAssignment.h"
#include "foundation/graph/VGraph.h"
#include "foundation/persistence/VXMLFile.h"

namespace VFoundation {

VClass* VGraphNode::ms_theClass = nullptr;
VString* VGraphNode::ms_keyNodeID = nullptr;
VString* VGraphNode::ms_keyScreenXY = nullptr;
VString* VGraphNode::ms_keyScreenMinimised = nullptr;
std::atomic<std::int32_t> VGraphNode::ms_masterGraphNodeID{1};

VGraphNode::VGraphNode(VClass* cls)
    : Registered(cls), m_nodeID(ms_masterGraphNodeID.fetch_add(1, std::memory_order_relaxed)) {
}

VGraphNode::~VGraphNode() = default;

VGraphNode* VGraphNode::New() {
    return new VGraphNode;
}

void VGraphNode::InitializeClass() {
    MakeClassString(ms_keyNodeID, "nodeID");
    MakeClassString(ms_keyScreenXY, "screen_XY");
    MakeClassString(ms_keyScreenMinimised, "screen_minimised");
    ms_masterGraphNodeID = 1;
}

void VGraphNode::UninitializeClass() {
    detail::ReleaseAndClear(ms_keyNodeID);
    detail::ReleaseAndClear(ms_keyScreenXY);
    detail::ReleaseAndClear(ms_keyScreenMinimised);
}

VGraphNode* VGraphNode::Copy() const {
    return detail::CopyByAssignment(*this);
}

VGraphNode& VGraphNode::operator=(VGraphNode const& other) {
    if (&other != this) {
        m_properties.DeepCopyContents(other.m_properties);
        m_nodeID = other.m_nodeID;
        m_attrib = other.m_attrib;
    }
    return *this;
}

bool VGraphNode::operator==(VGraphNode const& other) const {
    return &other == this;
}

void VGraphNode::SetAttrib(long attrib) {
    m_attrib = narrow_cast<std::int32_t>(attrib);
}

long VGraphNode::Attrib() const {
    return m_attrib;
}

void VGraphNode::SetGraph(VGraph* graph) {
    m_graph = graph ? graph->m_self : nullptr;
}

VGraph* VGraphNode::Graph() const {
    return m_graph ? *m_graph : nullptr;
}

VCriticalSection* VGraphNode::GraphCriticalSection() const {
    VGraph const* const graph = Graph();
    return graph ? graph->CriticalSection() : nullptr;
}

long VGraphNode::NodeID() const {
    return m_nodeID;
}

void VGraphNode::SetNodeID(long id) {
    m_nodeID = narrow_cast<std::int32_t>(id);
}

bool VGraphNode::SerializeAsXML(VXMLFile& file) {
    Registered::SerializeAsXML(file);
    return file.SerializeObject("properties", m_properties);
}

} // namespace VFoundation
