#pragma once

#include "foundation/containers/VDictionary.h"
#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/graph/VGraphEdge.h"
#include "foundation/graph/VGraphNode.h"
#include "foundation/threads/VCriticalSection.h"

#include <memory>
#include <string_view>

namespace VFoundation {

class NodeIndex;
class VString;

/// Nodes, edges between them and properties, to be edited, copied and saved as XML.
///
///     auto const graph = MakeObject<VGraph>();
///     VGraphNode* const aston = graph->AddNamedNode("Aston");
///     graph->Connect(aston, graph->AddNamedNode("Barley"));
///     file.WriteObject("graph", graph.Get());
///
/// Nodes and edges stand in two arrays, in order of addition. A saved graph comes back with every edge attached:
/// saving numbers the nodes by their place, and loading takes the numbers as places.
///
/// Adding a node or an edge, finding one and counting neighbours cost a walk at most over one array. Copying,
/// merging, loading and saving cost time in proportion to the graph.
///
/// The arrays take any object from a file; entries that are no nodes or edges are kept, and passed over.
///
/// DELIBERATE: `ReplaceNode` leaves the second end of a loop at the old node.
/// DELIBERATE: copies and sub-graphs have no properties, and their nodes no graph.
/// DELIBERATE: merged nodes keep naming the graph that they came from.
/// DELIBERATE: an entry that is no node takes a place but no number; in a file, edges that end after it come back
/// one node earlier for each.
/// DELIBERATE: `RemoveNode` and `ReplaceNode` do not ask whether the node is in the graph; the edges that touch it are
/// changed, the node is detached from the graph that it names, and the result is true.
///
/// `Nodes()` and `Edges()` may be changed directly: a node that is removed from the array is detached. Destructors of
/// nodes and edges may use the graph. Copies are built aside: when a `Copy()` or an assignment throws, the graph is as
/// it was.
///
/// Ownership: retains nodes and edges, owns its properties and its lock. Nodes that still name the graph when it
/// dies are detached, members or not.
/// Threads: one thread at a time. The graph has a lock for its users, which its own operations do not take.
class VFOUNDATION_API VGraph : public Registered<VGraph, VObject> {
  public:
    static constexpr char const* kClassName = "VGraph";
    static VClass* ms_theClass;

    using NodeArray = VObjectArrayTmpl<VGraphNode>;
    using EdgeArray = VObjectArrayTmpl<VGraphEdge>;

    explicit VGraph(VClass* cls = nullptr);
    VGraph(VGraph const&) = delete;
    ~VGraph() override;
    [[nodiscard]] static VGraph* New();
    /// Makes the keys.
    static void InitializeClass();
    static void UninitializeClass();

    /// A new graph (owned) of the same class, assigned from this one; null when the class has no factory.
    [[nodiscard]] VGraph* Copy() const override;
    /// Properties, nodes and edges. Loading replaces nodes and edges, and adds to the properties. False when one of
    /// the three was not there or could not be written.
    bool SerializeAsXML(VXMLFile& file) override;

    /// Holds copies of the other's nodes and edges instead of its own, attached by the ids that the edges noted; of
    /// nodes with the same id the first counts.
    virtual VGraph& operator=(VGraph const& other);

    // Editing. A true result marks the graph as changed. Null arguments are false.

    /// Appends and attaches the node.
    virtual bool AddNode(VGraphNode* node);
    /// Adds a new node with this text as its property "name" (borrowed: the graph holds it).
    VGraphNode* AddNamedNode(std::string_view name);
    /// Adds a new edge between two nodes (borrowed), each of which may be null.
    VGraphEdge* Connect(VGraphNode* from, VGraphNode* to);
    /// Removes every edge that touches the node, then the node, and detaches it.
    virtual bool RemoveNode(VGraphNode* node);
    /// Puts another node in the place of `oldNode`, which is detached: in the array, if it is there, and as the end of
    /// edges. The new node names this graph.
    virtual bool ReplaceNode(VGraphNode* oldNode, VGraphNode* newNode);
    virtual bool AddEdge(VGraphEdge* edge);
    /// False when it is not in the graph.
    virtual bool RemoveEdge(VGraphEdge* edge);

    /// A flag for the application, which clears it when it has saved.
    virtual void SetChanged(bool changed);
    virtual bool Changed() const;
    /// For graphs that compute; nothing here.
    virtual void Update();

    // Asking.

    virtual long NodeCount() const;
    virtual long EdgeCount() const;
    virtual bool ContainsNode(VGraphNode const* node) const;
    virtual bool ContainsEdge(VGraphEdge const* edge) const;
    /// The edges that touch the node, without loops.
    virtual long CountNeighboursOfNode(VGraphNode const* node) const;
    /// The first node with this id (borrowed), or null.
    VGraphNode* NodeForID(long id) const;

    NodeArray& Nodes() noexcept { return m_nodes; }
    NodeArray const& Nodes() const noexcept { return m_nodes; }
    EdgeArray& Edges() noexcept { return m_edges; }
    EdgeArray const& Edges() const noexcept { return m_edges; }
    VDictionary& Properties() noexcept { return m_properties; }
    VDictionary const& Properties() const noexcept { return m_properties; }
    /// The users' lock (borrowed).
    VCriticalSection* CriticalSection() const noexcept { return m_criticalSection.Get(); }

    // Ids.

    /// Numbers the nodes in order, upwards from `first`. Entries that are no nodes are traced and get no number.
    void AssignUniqueIDsToAllNodes(long first);
    void AssignUniqueIDsToAllEdges(long first);
    /// Both from 0; then the edges note the ids of their ends.
    void AssignUniqueIDs();
    /// Lets every edge note the ids of its ends.
    virtual void UpdateEdgeNodeIDs();
    /// Attaches every edge to the nodes whose places in the array it noted as ids; no node where there is none.
    void UpdateEdgesFromIDs();

    // Graphs of graphs.

    /// A new graph (owned) of the same class, with copies of `nodes` and of the edges of this graph that have both
    /// ends among them, numbered anew. Null for null.
    [[nodiscard]] virtual VGraph* CreateSubGraphWithNodes(NodeArray const* nodes);
    /// Adds the other's nodes and edges themselves and numbers everything anew; `other` may be this graph, which
    /// then holds each of them twice. False for null.
    virtual bool MergeWithGraph(VGraph const* other);
    /// `Copy()`.
    [[nodiscard]] virtual VGraph* CopyGraph();

    /// Keys for properties: "sliderX" and "sliderY". Null before `InitializeClass`.
    static VString* ms_keySliderX;
    static VString* ms_keySliderY;

  private:
    friend class VGraphNode;

    /// Detaches what leaves it, whichever operation takes it out.
    class Members : public NodeArray {
      public:
        explicit Members(VGraph& graph) : m_graph(graph) {}

        bool RemoveObjectAtIndex(long index) override;
        bool RemoveObjectAtIndexUnsafe(long index) override;
        void RemoveAllObjects() override;
        void RemoveAllObjectsUnsafe() override;
        bool ReplaceObjectAtIndex(VObject const* object, long index) override;
        void DetachAll();

      private:
        void Detach(long index);

        VGraph& m_graph;
    };

    static void AttachCopy(VGraphEdge& edge, NodeIndex const& nodes);
    void RemoveEdgesOf(VGraphNode const& node);
    void TakeOver(NodeArray& nodes, EdgeArray& edges);
    bool Load(VXMLFile& file);
    bool Save(VXMLFile& file);

    VObjectRef<VCriticalSection> m_criticalSection;
    std::shared_ptr<VGraph*>
        m_self; // shared with the nodes that name the graph; null in it when the graph is gone
    Members m_nodes{*this};
    EdgeArray m_edges;
    VDictionary m_properties;
    bool m_changed = false;
};

} // namespace VFoundation
