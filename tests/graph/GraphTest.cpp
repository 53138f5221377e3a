// Graphs in memory: editing, ids, copies, parts and unions.

#include "foundation/threads/VCriticalSection.h"
#include "tests/graph/GraphTestSupport.h"
#include "tests/support/Counted.h"
#include "tests/support/LineLog.h"

namespace {

using namespace graph_test;
using testing_support::ACounted;

/// A graph of a class of its own, with something to count.
class ACountingGraph : public Registered<ACountingGraph, VGraph> {
  public:
    static constexpr char const* kClassName = "ACountingGraph";
    static inline VClass* ms_theClass = nullptr;
    explicit ACountingGraph(VClass* cls = nullptr) : Registered(cls) {}
    static ACountingGraph* New() { return new ACountingGraph; }
    void SetChanged(bool changed) override {
        ++m_changes;
        VGraph::SetChanged(changed);
    }
    int m_changes = 0;
};

TEST(Graph, TakesNodesAndEdges) {
    auto const graph = VObjectRef<ACountingGraph>::Adopt(ACountingGraph::New());
    EXPECT_FALSE(graph->Changed());
    VGraphNode* const a = AddNode(*graph);
    VGraphNode* const b = AddNode(*graph);
    EXPECT_EQ(b->NodeID(), a->NodeID() + 1); // the process's next
    EXPECT_EQ(a->Graph(), graph.Get());
    EXPECT_EQ(a->GraphCriticalSection(), graph->CriticalSection());
    EXPECT_NE(graph->CriticalSection(), nullptr);
    VGraphEdge* const edge = AddEdge(*graph, a, b);
    EXPECT_EQ(edge->SourceNodeID(), a->NodeID());
    EXPECT_EQ(edge->DestinationNodeID(), b->NodeID());
    EXPECT_EQ(edge->EdgeID(), -1);
    EXPECT_EQ(a->RetainCount(), 2);
    EXPECT_TRUE(graph->ContainsNode(a) && graph->ContainsEdge(edge));
    EXPECT_EQ(graph->NodeCount(), 2);
    EXPECT_EQ(graph->m_changes, 3);
    EXPECT_TRUE(graph->Changed());
    graph->SetChanged(false);
    graph->Update();
    EXPECT_FALSE(graph->AddNode(nullptr) || graph->AddEdge(nullptr) || graph->RemoveEdge(nullptr) ||
                 graph->RemoveNode(nullptr) || graph->ReplaceNode(nullptr, a) ||
                 graph->ReplaceNode(a, nullptr));
    EXPECT_FALSE(graph->Changed());
    EXPECT_TRUE(*a == *a);
    EXPECT_FALSE(*a == *b);
    EXPECT_TRUE(graph->RemoveEdge(edge));
    EXPECT_FALSE(graph->RemoveEdge(edge));
    EXPECT_TRUE(graph->Changed());
    EXPECT_STREQ(VGraph::ms_keySliderX->CString(), "sliderX");
    EXPECT_STREQ(VGraph::ms_keySliderY->CString(), "sliderY");
    EXPECT_STREQ(VGraphNode::ms_keyNodeID->CString(), "nodeID");
    EXPECT_STREQ(VGraphNode::ms_keyScreenXY->CString(), "screen_XY");
    EXPECT_STREQ(VGraphNode::ms_keyScreenMinimised->CString(), "screen_minimised");
}

TEST(Graph, RemovesANodeWithAllItsEdges) {
    GraphRef const graph = GraphOf(4, {{0, 1}, {1, 2}, {2, 1}, {1, 1}, {2, 3}, {3, 1}, {3, 0}});
    VObjectRef<VGraphNode> const node(NodeAt(*graph, 1));
    EXPECT_EQ(graph->CountNeighboursOfNode(node.Get()), 4); // the loop is none
    EXPECT_EQ(graph->CountNeighboursOfNode(nullptr), 0);
    EXPECT_TRUE(graph->RemoveNode(node.Get()));
    EXPECT_EQ(EndsOf(*graph), (Ends{{1, 2}, {2, 0}})); // in their order
    EXPECT_EQ(graph->NodeCount(), 3);
    EXPECT_EQ(node->Graph(), nullptr);
    EXPECT_EQ(node->GraphCriticalSection(), nullptr);
    EXPECT_EQ(node->RetainCount(), 1);
    EXPECT_FALSE(graph->RemoveNode(node.Get()));
}

TEST(Graph, ReplacesANodeButLeavesTheSecondEndOfALoop) {
    GraphRef const graph = GraphOf(3, {{0, 1}, {1, 2}, {1, 1}, {2, 0}});
    VObjectRef<VGraphNode> const oldNode(NodeAt(*graph, 1));
    auto const newNode = VObjectRef<VGraphNode>::Adopt(VGraphNode::New());
    EXPECT_TRUE(graph->ReplaceNode(oldNode.Get(), newNode.Get()));
    EXPECT_EQ(NodeAt(*graph, 1), newNode.Get());
    EXPECT_EQ(EndsOf(*graph), (Ends{{0, 1}, {1, 2}, {1, -1}, {2, 0}}));
    EXPECT_EQ(EdgeAt(*graph, 2)->Node2(), oldNode.Get());
    EXPECT_EQ(EdgeAt(*graph, 0)->DestinationNodeID(), newNode->NodeID());
    EXPECT_EQ(oldNode->Graph(), nullptr);
    EXPECT_EQ(newNode->Graph(), graph.Get());
    EXPECT_FALSE(graph->ReplaceNode(oldNode.Get(), newNode.Get()));
    EXPECT_TRUE(graph->ReplaceNode(NodeAt(*graph, 0), NodeAt(*graph, 0))); // by itself
    EXPECT_EQ(NodeAt(*graph, 0)->Graph(), graph.Get());
    EXPECT_EQ(graph->NodeCount(), 3);
}

TEST(Graph, NumbersNodesAndEdgesByPlace) {
    GraphRef const graph = GraphOf(3, {{2, 0}, {1, 1}});
    AddEdge(*graph, nullptr, NodeAt(*graph, 2));
    graph->AssignUniqueIDs();
    EXPECT_EQ(IDsOf(*graph), (IDs{0, 1, 2}));
    EXPECT_EQ(EdgeAt(*graph, 0)->SourceNodeID(), 2);
    EXPECT_EQ(EdgeAt(*graph, 2)->SourceNodeID(), -1);
    EXPECT_EQ(EdgeAt(*graph, 2)->EdgeID(), 2);
    graph->AssignUniqueIDsToAllNodes(40);
    graph->AssignUniqueIDsToAllEdges(7);
    EXPECT_EQ(IDsOf(*graph), (IDs{40, 41, 42}));
    EXPECT_EQ(EdgeAt(*graph, 1)->EdgeID(), 8);
    EXPECT_EQ(EdgeAt(*graph, 0)->SourceNodeID(), 2); // until the edges look
    graph->UpdateEdgeNodeIDs();
    EXPECT_EQ(EdgeAt(*graph, 0)->SourceNodeID(), 42);

    NodeAt(*graph, 2)->SetNodeID(41);
    EXPECT_EQ(graph->NodeForID(41), NodeAt(*graph, 1)); // the first
    EXPECT_EQ(graph->NodeForID(43), nullptr);

    // Ids as places: beyond the nodes there is none.
    NodeAt(*graph, 0)->SetNodeID(3);
    graph->UpdateEdgeNodeIDs();
    NodeAt(*graph, 1)->SetNodeID(2);
    EdgeAt(*graph, 1)->UpdateNodeIDs();
    graph->UpdateEdgesFromIDs();
    EXPECT_EQ(EndsOf(*graph), (Ends{{-1, -1}, {2, 2}, {-1, -1}}));
}

TEST(Graph, PassesOverEntriesThatAreNoNodes) {
    testing_support::LineLogScope const log;
    GraphRef const graph = GraphOf(2, {{0, 1}});
    graph->Nodes().InsertObjectAtIndex(VObjectRef<ACounted>::Adopt(ACounted::New()).Get(), 1);
    graph->Nodes().InsertObjectAtIndex(nullptr, 0);
    graph->Edges().InsertObjectAtIndex(VObjectRef<ACounted>::Adopt(ACounted::New()).Get(), 0);
    graph->AssignUniqueIDs();
    EXPECT_EQ(log->Lines(), (std::vector<std::string>{
                                "VGraph::SerializeAsXML - node expected to be VGraphNode: NULL\n",
                                "VGraph::SerializeAsXML - node expected to be VGraphNode: ACounted\n"}));
    VGraphEdge const* const edge = EdgeAt(*graph, 1);
    EXPECT_EQ(edge->SourceNodeID(), 0);
    EXPECT_EQ(edge->DestinationNodeID(), 1); // without a gap
    EXPECT_EQ(graph->NodeForID(1), NodeAt(*graph, 3));
    GraphRef const copy = GraphRef::Adopt(graph->CopyGraph());
    EXPECT_EQ(copy->NodeCount(), 4);
    EXPECT_EQ(EdgeAt(*copy, 1)->Node2(), NodeAt(*copy, 3));
    graph->UpdateEdgesFromIDs(); // places count every entry
    EXPECT_EQ(edge->Node1(), nullptr);
    EXPECT_EQ(edge->Node2(), NodeAt(*graph, 1));
    EXPECT_TRUE(graph->MergeWithGraph(copy.Get()));
    EXPECT_TRUE(graph->RemoveNode(NodeAt(*graph, 1)));
    EXPECT_EQ(graph->EdgeCount(), 3); // the foreign entries and the copy's edge
}

TEST(Graph, CopiesNodesAndEdgesButNotTheRest) {
    auto const graph = VObjectRef<ACountingGraph>::Adopt(ACountingGraph::New());
    VGraphNode* const a = AddNode(*graph);
    VGraphNode* const b = AddNode(*graph);
    AddEdge(*graph, b, a);
    AddEdge(*graph, a, nullptr);
    a->SetAttrib(5);
    SetProperty(a->Properties(), "label", "first");
    SetProperty(graph->Properties(), "title", "kept");
    GraphRef const copy = GraphRef::Adopt(graph->Copy());
    EXPECT_STREQ(copy->ClassName(), "ACountingGraph");
    EXPECT_EQ(EndsOf(*copy), (Ends{{1, 0}, {0, -1}}));
    EXPECT_EQ(IDsOf(*copy), IDsOf(*graph));
    EXPECT_TRUE(copy->Changed());
    VGraphNode* const copied = NodeAt(*copy, 0);
    EXPECT_NE(copied, a);
    EXPECT_EQ(copied->Attrib(), 5);
    EXPECT_EQ(copied->Graph(), nullptr);
    EXPECT_EQ(PropertyOf(copied->Properties(), "label"), "first");
    SetProperty(copied->Properties(), "label", "changed");
    EXPECT_EQ(PropertyOf(a->Properties(), "label"), "first");
    EXPECT_EQ(PropertyOf(copy->Properties(), "title"), "(none)");

    // Assignment lets go of what was there; onto itself it changes nothing.
    GraphRef const target = GraphOf(3, {{0, 1}});
    VObjectRef<VGraphNode> const former(NodeAt(*target, 0));
    *target = *graph;
    EXPECT_EQ(former->Graph(), nullptr);
    EXPECT_EQ(EndsOf(*target), (Ends{{1, 0}, {0, -1}}));
    VGraph const& same = *target;
    *target = same;
    EXPECT_EQ(EndsOf(*target), (Ends{{1, 0}, {0, -1}}));
    *copied = *copied;
    EXPECT_EQ(PropertyOf(copied->Properties(), "label"), "changed");
}

TEST(Graph, AttachesCopiesToTheFirstNodeOfAnId) {
    GraphRef const graph = GraphOf(4, {{3, 2}, {0, 1}});
    for (long const id : {9L, -3L, 4L, 9L}) {
        static long s_place = 0;
        NodeAt(*graph, s_place++)->SetNodeID(id);
    }
    graph->UpdateEdgeNodeIDs();
    EXPECT_EQ(EndsOf(*GraphRef::Adopt(graph->CopyGraph())), (Ends{{0, 2}, {0, 1}}));
}

TEST(Graph, MakesAPartOfChosenNodes) {
    GraphRef const graph = GraphOf(5, {{0, 1}, {1, 3}, {3, 3}, {3, 1}, {4, 0}, {2, 3}});
    AddEdge(*graph, NodeAt(*graph, 1), nullptr);
    VGraph::NodeArray chosen;
    for (long const place : {3L, 0L, 1L}) {
        chosen.AddObject(NodeAt(*graph, place));
    }
    auto const stranger = VObjectRef<VGraphNode>::Adopt(VGraphNode::New());
    chosen.AddObject(stranger.Get());
    GraphRef const part = GraphRef::Adopt(graph->CreateSubGraphWithNodes(&chosen));
    EXPECT_EQ(EndsOf(*part), (Ends{{1, 2}, {2, 0}, {0, 0}, {0, 2}}));
    EXPECT_EQ(IDsOf(*part), (IDs{0, 1, 2, 3}));
    EXPECT_EQ(EdgeAt(*part, 1)->SourceNodeID(), 2);
    EXPECT_EQ(EdgeAt(*part, 3)->EdgeID(), 3);
    EXPECT_EQ(NodeAt(*part, 0)->Graph(), nullptr);
    EXPECT_EQ(part->RetainCount(), 1);
    EXPECT_EQ(graph->EdgeCount(), 7);
    EXPECT_EQ(graph->CreateSubGraphWithNodes(nullptr), nullptr);
}

TEST(Graph, MergesWithAnotherAndWithItself) {
    GraphRef const graph = GraphOf(2, {{0, 1}});
    GraphRef other = GraphOf(2, {{1, 0}, {1, 1}});
    VGraphNode* const shared = NodeAt(*other, 1);
    EXPECT_FALSE(graph->MergeWithGraph(nullptr));
    EXPECT_TRUE(graph->MergeWithGraph(other.Get()));
    EXPECT_EQ(EndsOf(*graph), (Ends{{0, 1}, {3, 2}, {3, 3}}));
    EXPECT_EQ(IDsOf(*graph), (IDs{0, 1, 2, 3}));
    EXPECT_EQ(EdgeAt(*graph, 1)->SourceNodeID(), 3);
    EXPECT_EQ(NodeAt(*graph, 3), shared);
    EXPECT_EQ(shared->Graph(), other.Get());
    other = GraphRef();
    EXPECT_EQ(shared->Graph(), nullptr);

    EXPECT_TRUE(graph->MergeWithGraph(graph.Get()));
    EXPECT_EQ(graph->NodeCount(), 8);
    EXPECT_EQ(graph->EdgeCount(), 6);
    EXPECT_EQ(NodeAt(*graph, 7), shared);
    EXPECT_EQ(shared->NodeID(), 7); // the last place counts
}

TEST(Graph, DetachesItsNodesWhenItDies) {
    auto const node = VObjectRef<VGraphNode>::Adopt(VGraphNode::New());
    GraphRef first = GraphRef::Adopt(VGraph::New());
    GraphRef second = GraphRef::Adopt(VGraph::New());
    first->AddNode(node.Get());
    second->AddNode(node.Get());
    first = GraphRef();
    EXPECT_EQ(node->Graph(), second.Get()); // that is where it belongs now
    second = GraphRef();
    EXPECT_EQ(node->Graph(), nullptr);
}

// Anything that looks at every node for every edge takes minutes here.
TEST(Graph, EditsLargeGraphsInProportionToTheirSize) {
    constexpr long kNodes = 100000;
    constexpr long kEdges = 300000;
    GraphRef const graph = GraphRef::Adopt(VGraph::New());
    std::vector<VGraphNode*> nodes;
    for (long i = 0; i < kNodes; ++i) {
        nodes.push_back(AddNode(*graph));
    }
    for (long i = 0; i < kEdges; ++i) {
        AddEdge(*graph, nodes[static_cast<std::size_t>(i % kNodes)],
                nodes[static_cast<std::size_t>(i % 3 == 0 ? 0 : i * 7919 % kNodes)]);
    }
    nodes[5]->SetNodeID(nodes[6]->NodeID());
    graph->UpdateEdgeNodeIDs();
    GraphRef const copy = GraphRef::Adopt(graph->CopyGraph());
    EXPECT_EQ(copy->EdgeCount(), kEdges);
    GraphRef const part = GraphRef::Adopt(copy->CreateSubGraphWithNodes(&copy->Nodes()));
    EXPECT_EQ(part->EdgeCount(), kEdges);
    EXPECT_TRUE(part->MergeWithGraph(copy.Get()));
    EXPECT_EQ(part->NodeCount(), 2 * kNodes);
    long const touching = graph->CountNeighboursOfNode(nodes[0]);
    EXPECT_GT(touching, kEdges / 4);
    EXPECT_TRUE(graph->RemoveNode(nodes[0])); // which a third of the edges touches
    EXPECT_LE(graph->EdgeCount(), kEdges - touching);
}

} // namespace
