#include "foundation/graph/VGraph.h"

#include "foundation/containers/internal/ClassString.h"
#include "foundation/containers/internal/ContainerAccess.h"
#include "foundation/containers/internal/KeepAlive.h"
#include "foundation/containers/internal/Snapshot.h"
#include "foundation/containers/internal/VObjectCast.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/core/internal/CopyByAssignment.h"
#include "foundation/graph/internal/NodeIndex.h"
#include "foundation/log/VLog.h"
#include "foundation/persistence/VXMLFile.h"

#include <typeinfo>
#include <unordered_set>
#include <utility>

namespace VFoundation {

VClass* VGraph::ms_theClass = nullptr;
VString* VGraph::ms_keySliderX = nullptr;
VString* VGraph::ms_keySliderY = nullptr;

namespace {

/// Reports the entries of an array that are no `T`.
template <class T>
void NoteStrangers(VObjectArray const& array, VXMLFile& file) {
    for (VObject* const entry : Snapshot(array)) {
        if (!VObjectCast<T>(entry)) {
            file.NoteLoss(LoadReport::kWrongKind, entry ? entry->ClassName() : "NULL");
        }
    }
}

/// Calls `action` for every entry of the array that is a `T`, in order.
template <class T, class Action>
void ForEach(VObjectArrayTmpl<T> const& array, Action action) {
    for (long i = 0; i < array.Count(); ++i) {
        // Held, for the action may run code that removes it.
        if (VObjectRef<T> const entry(VObjectCast<T>(array.ObjectAtIndex(i))); entry) {
            action(*entry);
        }
    }
}

bool Touches(VGraphEdge const& edge, VGraphNode const* node) {
    return edge.Node1() == node || edge.Node2() == node;
}

} // namespace

VGraph::VGraph(VClass* cls) : Registered(cls), m_self(std::make_shared<VGraph*>(this)) {
    m_criticalSection.Allocate();
}

/// Nodes and edges go while the graph is whole, for their destructors.
VGraph::~VGraph() {
    try {
        m_nodes.DetachAll();
    } catch (...) { // an override's; the nodes find no graph all the same
    }
    *m_self = nullptr;
    while (m_edges.Count() > 0 || m_nodes.Count() > 0) {
        NodeArray nodes;
        EdgeArray edges;
        TakeOver(nodes, edges);
    }
}

VGraph* VGraph::New() {
    return new VGraph;
}

void VGraph::InitializeClass() {
    MakeClassString(ms_keySliderX, "sliderX");
    MakeClassString(ms_keySliderY, "sliderY");
}

void VGraph::UninitializeClass() {
    detail::ReleaseAndClear(ms_keySliderX);
    detail::ReleaseAndClear(ms_keySliderY);
}

// Editing

bool VGraph::AddNode(VGraphNode* node) {
    if (!node || !m_nodes.AddObject(node)) {
        return false;
    }
    node->SetGraph(this);
    SetChanged(true);
    return true;
}

VGraphNode* VGraph::AddNamedNode(std::string_view name) {
    auto const node = MakeObject<VGraphNode>();
    node->Properties().SetObjectForKey(MakeObject<VString>(name).Get(), "name");
    return AddNode(node.Get()) ? node.Get() : nullptr;
}

VGraphEdge* VGraph::Connect(VGraphNode* from, VGraphNode* to) {
    auto const edge = MakeObject<VGraphEdge>();
    edge->SetNodes(from, to);
    return AddEdge(edge.Get()) ? edge.Get() : nullptr;
}

bool VGraph::RemoveNode(VGraphNode* node) {
    if (!node) {
        return false;
    }
    auto const alive = KeepAlive(*this);
    VObjectRef<VGraphNode> const held(node);
    RemoveEdgesOf(*node);
    node->SetGraph(nullptr);
    m_nodes.RemoveObject(node);
    SetChanged(true);
    return true;
}

/// Gathers the edges that stay in an array of its own and takes over its contents, which costs two walks however many
/// edges go. They are released in order, at the end.
void VGraph::RemoveEdgesOf(VGraphNode const& node) {
    bool touches = false;
    ForEach(m_edges, [&](VGraphEdge const& edge) { touches = touches || Touches(edge, &node); });
    if (!touches) {
        return;
    }
    EdgeArray kept;
    for (VObject* const entry : Snapshot(m_edges)) {
        auto const* const edge = VObjectCast<VGraphEdge>(entry);
        if (!edge || !Touches(*edge, &node)) {
            kept.AddObject(entry);
        }
    }
    detail::ContainerAccess::Swap(m_edges, kept);
}

bool VGraph::ReplaceNode(VGraphNode* oldNode, VGraphNode* newNode) {
    if (!oldNode || !newNode) {
        return false;
    }
    auto const alive = KeepAlive(*this);
    VObjectRef<VGraphNode> const heldOld(oldNode);
    VObjectRef<VGraphNode> const heldNew(newNode);
    ForEach(m_edges, [oldNode, newNode](VGraphEdge& edge) {
        if (edge.Node1() == oldNode) {
            edge.SetNodes(newNode, edge.Node2());
        } else if (edge.Node2() == oldNode) {
            edge.SetNodes(edge.Node1(), newNode);
        }
    });
    if (long const index = m_nodes.IndexOfObject(oldNode); index >= 0) {
        m_nodes.ReplaceObjectAtIndex(newNode, index);
    }
    oldNode->SetGraph(nullptr);
    newNode->SetGraph(this);
    SetChanged(true);
    return true;
}

bool VGraph::AddEdge(VGraphEdge* edge) {
    if (!edge || !m_edges.AddObject(edge)) {
        return false;
    }
    SetChanged(true);
    return true;
}

bool VGraph::RemoveEdge(VGraphEdge* edge) {
    if (!m_edges.RemoveObject(edge)) {
        return false;
    }
    SetChanged(true);
    return true;
}

void VGraph::SetChanged(bool changed) {
    m_changed = changed;
}

bool VGraph::Changed() const {
    return m_changed;
}

void VGraph::Update() {
}

// The array of nodes. Nodes that name this graph must not keep doing so when they leave it.

void VGraph::Members::Detach(long index) {
    VObjectRef<VGraphNode> const node(VObjectCast<VGraphNode>(ObjectAtIndex(index)));
    if (node && node->Graph() == &m_graph) {
        node->SetGraph(nullptr);
    }
}

void VGraph::Members::DetachAll() {
    for (long i = 0; i < Count(); ++i) {
        Detach(i);
    }
}

bool VGraph::Members::RemoveObjectAtIndex(long index) {
    Detach(index);
    return NodeArray::RemoveObjectAtIndex(index);
}

bool VGraph::Members::RemoveObjectAtIndexUnsafe(long index) {
    Detach(index);
    return NodeArray::RemoveObjectAtIndexUnsafe(index);
}

void VGraph::Members::RemoveAllObjects() {
    DetachAll();
    NodeArray::RemoveAllObjects();
}

void VGraph::Members::RemoveAllObjectsUnsafe() {
    DetachAll();
    NodeArray::RemoveAllObjectsUnsafe();
}

bool VGraph::Members::ReplaceObjectAtIndex(VObject const* object, long index) {
    if (ObjectAtIndex(index) != object) {
        Detach(index);
    }
    return NodeArray::ReplaceObjectAtIndex(object, index);
}

/// Takes the contents of two arrays that were built aside, and leaves them its own, to be released when it is whole.
void VGraph::TakeOver(NodeArray& nodes, EdgeArray& edges) {
    detail::ContainerAccess::Swap(m_nodes, nodes);
    detail::ContainerAccess::Swap(m_edges, edges);
}

// Asking

long VGraph::NodeCount() const {
    return m_nodes.Count();
}

long VGraph::EdgeCount() const {
    return m_edges.Count();
}

bool VGraph::ContainsNode(VGraphNode const* node) const {
    return m_nodes.ContainsObject(node);
}

bool VGraph::ContainsEdge(VGraphEdge const* edge) const {
    return m_edges.ContainsObject(edge);
}

long VGraph::CountNeighboursOfNode(VGraphNode const* node) const {
    long count = 0;
    ForEach(m_edges, [node, &count](VGraphEdge const& edge) {
        count += node && Touches(edge, node) && edge.Node1() != edge.Node2() ? 1 : 0;
    });
    return count;
}

VGraphNode* VGraph::NodeForID(long id) const {
    for (long i = 0; i < m_nodes.Count(); ++i) {
        auto* const node = VObjectCast<VGraphNode>(m_nodes.ObjectAtIndex(i));
        if (node && node->NodeID() == id) {
            return node;
        }
    }
    return nullptr;
}

// Ids

void VGraph::AssignUniqueIDsToAllNodes(long first) {
    for (long i = 0; i < m_nodes.Count(); ++i) {
        VObject* const entry = m_nodes.ObjectAtIndex(i);
        if (auto* const node = VObjectCast<VGraphNode>(entry)) {
            node->SetNodeID(first++);
        } else {
            VLog::Trace("VGraph::SerializeAsXML - node expected to be VGraphNode: %s\n",
                        entry ? entry->ClassName() : "NULL");
        }
    }
}

void VGraph::AssignUniqueIDsToAllEdges(long first) {
    ForEach(m_edges, [&first](VGraphEdge& edge) { edge.SetEdgeID(first++); });
}

void VGraph::AssignUniqueIDs() {
    AssignUniqueIDsToAllNodes(0);
    AssignUniqueIDsToAllEdges(0);
    UpdateEdgeNodeIDs();
}

void VGraph::UpdateEdgeNodeIDs() {
    ForEach(m_edges, [](VGraphEdge& edge) { edge.UpdateNodeIDs(); });
}

void VGraph::UpdateEdgesFromIDs() {
    auto const nodeAt = [this](long place) { return VObjectCast<VGraphNode>(m_nodes.ObjectAtIndex(place)); };
    ForEach(m_edges, [nodeAt](VGraphEdge& edge) {
        edge.SetNodes(nodeAt(edge.SourceNodeID()), nodeAt(edge.DestinationNodeID()));
    });
}

// Graphs of graphs

VGraph* VGraph::Copy() const {
    return detail::CopyByAssignment(*this);
}

VGraph* VGraph::CopyGraph() {
    return Copy();
}

/// Ends an edge at the nodes whose ids it noted. A plain edge with both ends has nothing to ask them.
void VGraph::AttachCopy(VGraphEdge& edge, NodeIndex const& nodes) {
    VGraphNode* const first = nodes.Find(edge.SourceNodeID());
    VGraphNode* const second = nodes.Find(edge.DestinationNodeID());
    if (first && second && typeid(edge) == typeid(VGraphEdge)) {
        edge.Attach(*first, *second);
    } else {
        edge.SetNodes(first, second);
    }
}

VGraph& VGraph::operator=(VGraph const& other) {
    if (&other == this) {
        return *this;
    }
    auto const alive = KeepAlive(*this);
    EdgeArray edges;
    NodeArray nodes;
    nodes.DeepCopyContents(other.m_nodes);
    edges.DeepCopyContents(other.m_edges);
    NodeIndex const index(nodes);
    ForEach(edges, [&index](VGraphEdge& edge) { AttachCopy(edge, index); });
    m_nodes.DetachAll();
    TakeOver(nodes, edges);
    SetChanged(true);
    return *this;
}

VGraph* VGraph::CreateSubGraphWithNodes(NodeArray const* nodes) {
    auto graph = VObjectRef<VGraph>::Adopt(static_cast<VGraph*>(nodes ? Class()->NewInstance() : nullptr));
    if (!graph) {
        return nullptr;
    }
    std::unordered_set<VGraphNode const*> given;
    ForEach(*nodes, [&given](VGraphNode const& node) { given.insert(&node); });
    graph->m_nodes.DeepCopyContents(*nodes);
    NodeIndex const index(graph->m_nodes);
    ForEach(m_edges, [&graph, &index, &given](VGraphEdge const& edge) {
        if (!given.contains(edge.Node1()) || !given.contains(edge.Node2())) {
            return;
        }
        auto const copy = VObjectRef<VGraphEdge>::Adopt(edge.Copy());
        if (copy) {
            AttachCopy(*copy, index);
            graph->AddEdge(copy.Get());
        }
    });
    graph->AssignUniqueIDs();
    return graph.Detach();
}

bool VGraph::MergeWithGraph(VGraph const* other) {
    if (!other) {
        return false;
    }
    EdgeArray edges;
    NodeArray nodes;
    edges.AddObjects(&m_edges);
    nodes.AddObjects(&m_nodes);
    edges.AddObjects(&other->m_edges);
    nodes.AddObjects(&other->m_nodes);
    TakeOver(nodes, edges);
    AssignUniqueIDs();
    return true;
}

// Persistence

bool VGraph::SerializeAsXML(VXMLFile& file) {
    Registered::SerializeAsXML(file);
    return file.IsLoading() ? Load(file) : Save(file);
}

bool VGraph::Load(VXMLFile& file) {
    bool const hasProperties = file.ReadObject("properties", m_properties);
    m_nodes.RemoveAllObjects();
    m_edges.RemoveAllObjects();
    bool const hasNodes = file.ReadObject("nodes", m_nodes);
    bool const hasEdges = file.ReadObject("edges", m_edges);
    ForEach(m_nodes, [this](VGraphNode& node) { node.SetGraph(this); });
    AssignUniqueIDsToAllNodes(0);
    AssignUniqueIDsToAllEdges(0);
    ForEach(m_edges, [this, &file](VGraphEdge& edge) {
        auto const isLost = [this](long id) {
            return id != VGraphEdge::kNoID && !VObjectCast<VGraphNode>(m_nodes.ObjectAtIndex(id));
        };
        if (isLost(edge.SourceNodeID()) || isLost(edge.DestinationNodeID())) {
            file.NoteLoss(LoadReport::kNotMade, "node of an edge");
        }
    });
    UpdateEdgesFromIDs();
    NoteStrangers<VGraphNode>(m_nodes, file);
    NoteStrangers<VGraphEdge>(m_edges, file);
    return hasProperties && hasNodes && hasEdges;
}

bool VGraph::Save(VXMLFile& file) {
    bool const hasProperties = file.WriteObject("properties", m_properties);
    AssignUniqueIDs();
    bool const hasNodes = file.WriteObject("nodes", m_nodes);
    return file.WriteObject("edges", m_edges) && hasProperties && hasNodes && file.IsComplete();
}

} // namespace VFoundation
