#include "foundation/graph/VGraph.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"
#include "tests/support/LineLog.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using GraphRef = VObjectRef<VGraph>;
using NodeRef = VObjectRef<VGraphNode>;
using Ends = std::vector<std::pair<long, long>>;
using IDs = std::vector<long>;

/// A graph of a class of its own.
class AnotherGraph : public Registered<AnotherGraph, VGraph> {
  public:
    static constexpr char const* kClassName = "AnotherGraph";
    static inline VClass* ms_theClass = nullptr;
    explicit AnotherGraph(VClass* cls = nullptr) : Registered(cls) {}
    static AnotherGraph* New() { return new AnotherGraph; }
};

VGraphNode* NodeAt(GraphRef const& graph, long place) {
    return graph->Nodes().ObjectAtIndexTyped(place);
}
VGraphEdge* EdgeAt(GraphRef const& graph, long place) {
    return graph->Edges().ObjectAtIndexTyped(place);
}

/// A graph of this many nodes and an edge for each pair of their places; -1 is no node.
GraphRef GraphOf(long nodes, Ends const& edges, VGraph* made = VGraph::New()) {
    GraphRef graph = GraphRef::Adopt(made);
    for (long i = 0; i < nodes; ++i) {
        graph->AddNode(NodeRef::Adopt(VGraphNode::New()).Get());
    }
    for (auto const& [from, to] : edges) {
        auto const edge = VObjectRef<VGraphEdge>::Adopt(VGraphEdge::New());
        EXPECT_TRUE(edge->SetNodes(NodeAt(graph, from), NodeAt(graph, to)));
        EXPECT_TRUE(graph->AddEdge(edge.Get()));
    }
    return graph;
}

/// Where the ends of each edge stand in the array of nodes; -1 for no node.
Ends EndsOf(GraphRef const& graph) {
    Ends ends;
    for (long i = 0; i < graph->EdgeCount(); ++i) {
        ends.emplace_back(graph->Nodes().IndexOfObject(EdgeAt(graph, i)->Node1()),
                          graph->Nodes().IndexOfObject(EdgeAt(graph, i)->Node2()));
    }
    return ends;
}

IDs IDsOf(GraphRef const& graph) {
    IDs ids;
    for (long i = 0; i < graph->NodeCount(); ++i) {
        ids.push_back(NodeAt(graph, i)->NodeID());
    }
    return ids;
}

std::string XMLOf(GraphRef const& graph) {
    VString text;
    VXMLFile file;
    EXPECT_TRUE(file.WriteFileToString(text, "Root"));
    EXPECT_TRUE(file.WriteObject("g", *graph));
    EXPECT_TRUE(file.CloseFile());
    return text.CString();
}

/// Whether the graph found all that it looked for.
bool Read(std::string const& text, GraphRef const& graph, std::string* report = nullptr) {
    VXMLFile file;
    auto const* const bytes = reinterpret_cast<unsigned char const*>(text.c_str());
    bool const isWhole = file.LoadFile("text", bytes, text.size(), "Root") &&
                         file.OpenFirstChildElement("VGraph") && graph->SerializeAsXML(file);
    if (report) {
        *report = file.Report().AsText();
    }
    return isWhole;
}

/// The library runs, and its lines are kept.
class VGraphTest : public testing::Test {
  protected:
    VGraphTest() {
        InitializeLibrary(false);
        m_lines.emplace();
    }
    ~VGraphTest() override {
        m_lines.reset();
        UninitializeLibrary(true, false, true);
    }

    std::optional<testing_support::LineLogScope> m_lines;
    VString const m_key = "key";
};

TEST_F(VGraphTest, TakesNodesAndEdges) {
    GraphRef const graph = GraphOf(2, {{0, 1}});
    VGraphNode* const a = NodeAt(graph, 0);
    EXPECT_EQ(NodeAt(graph, 1)->NodeID(), a->NodeID() + 1); // the process's next
    EXPECT_EQ(EdgeAt(graph, 0)->DestinationNodeID(), a->NodeID() + 1);
    EXPECT_EQ(a->RetainCount(), 2);
    EXPECT_EQ(a->GraphCriticalSection(), graph->CriticalSection());
    EXPECT_TRUE(graph->ContainsNode(a));
    EXPECT_TRUE(graph->ContainsEdge(EdgeAt(graph, 0)));
    EXPECT_TRUE(graph->Changed());
    graph->SetChanged(false);
    for (bool const done : {graph->AddNode(nullptr), graph->AddEdge(nullptr), graph->RemoveEdge(nullptr),
                            graph->RemoveNode(nullptr), graph->ReplaceNode(nullptr, a),
                            graph->ReplaceNode(a, nullptr), graph->Changed()}) {
        EXPECT_FALSE(done);
    }
    EXPECT_TRUE(graph->RemoveEdge(EdgeAt(graph, 0)));
    EXPECT_TRUE(graph->Changed());
}

TEST_F(VGraphTest, RemovesANodeWithAllItsEdges) {
    GraphRef const graph = GraphOf(4, {{0, 1}, {1, 2}, {2, 1}, {1, 1}, {2, 3}, {3, 1}, {3, 0}});
    NodeRef const node(NodeAt(graph, 1));
    EXPECT_EQ(graph->CountNeighboursOfNode(node.Get()), 4); // the loop is none
    EXPECT_TRUE(graph->RemoveNode(node.Get()));
    EXPECT_EQ(EndsOf(graph), (Ends{{1, 2}, {2, 0}})); // in their order
    EXPECT_EQ(node->GraphCriticalSection(), nullptr);
    EXPECT_EQ(node->RetainCount(), 1);
}

TEST_F(VGraphTest, RemovesAndReplacesNodesThatAreNotInIt) {
    GraphRef graph = GraphOf(2, {{0, 1}});
    GraphRef const other = GraphOf(2, {});
    NodeRef const foreign(NodeAt(other, 0));
    NodeRef const newNode = NodeRef::Adopt(VGraphNode::New());
    EXPECT_TRUE(EdgeAt(graph, 0)->SetNodes(NodeAt(graph, 0), foreign.Get()));
    EXPECT_TRUE(graph->ReplaceNode(foreign.Get(), newNode.Get()));
    EXPECT_EQ(EdgeAt(graph, 0)->Node2(), newNode.Get());
    EXPECT_EQ(foreign->Graph(), nullptr);
    EXPECT_EQ(newNode->Graph(), graph.Get());
    EXPECT_TRUE(graph->RemoveNode(newNode.Get()));
    EXPECT_EQ(graph->EdgeCount(), 0);
    EXPECT_EQ(newNode->Graph(), nullptr);
    EXPECT_TRUE(graph->ReplaceNode(foreign.Get(), newNode.Get())); // which no edge touches
    EXPECT_EQ(newNode->GraphCriticalSection(), graph->CriticalSection());
    graph = GraphRef();
    EXPECT_EQ(newNode->GraphCriticalSection(), nullptr);
}

TEST_F(VGraphTest, DetachesNodesThatLeaveItsArray) {
    using Nodes = VGraph::NodeArray;
    for (auto const leave :
         {+[](Nodes& nodes) { nodes.RemoveObject(nodes.ObjectAtIndex(0)); },
          +[](Nodes& nodes) { nodes.RemoveObjectUnsafe(nodes.ObjectAtIndex(0)); },
          +[](Nodes& nodes) { nodes.RemoveAllObjects(); },
          +[](Nodes& nodes) { nodes.RemoveAllObjectsUnsafe(); }, +[](Nodes& nodes) { nodes.FreeMem(); },
          +[](Nodes& nodes) { nodes.ReplaceObjectAtIndex(nullptr, 0); },
          +[](Nodes& nodes) { nodes.DeepCopyContents(Nodes()); }}) {
        GraphRef const graph = GraphOf(1, {});
        NodeRef const node(NodeAt(graph, 0));
        EXPECT_TRUE(graph->Nodes().ReplaceObjectAtIndex(node.Get(), 0)); // by itself
        EXPECT_EQ(node->Graph(), graph.Get());
        leave(graph->Nodes());
        EXPECT_EQ(node->Graph(), nullptr);
    }
}

using ALastNode = testing_support::ALast<VGraphNode>;

TEST_F(VGraphTest, MayBeUsedByDestructorsOfItsNodes) {
    GraphRef graph = GraphOf(2, {{0, 1}});
    VGraph* const raw = graph.Get();
    NodeRef const plain(NodeAt(graph, 0));
    VObjectRef<VGraphEdge> edge(EdgeAt(graph, 0));
    int deaths = 0;
    auto const addDying = [&](std::function<void()> act) {
        auto const node = NodeRef::Adopt(new ALastNode([&deaths, act] {
            ++deaths;
            act();
        }));
        EXPECT_TRUE(raw->AddNode(node.Get()));
        return node.Get();
    };
    // An edge that exchanges its ends, and one that ends with an end.
    edge->SetNodes(addDying([] {}), addDying([&] { edge.Exchange(nullptr); }));
    graph->Nodes().RemoveAllObjects();
    EXPECT_TRUE(edge->SetNodes(edge->Node2(), edge->Node1()));
    EXPECT_EQ(deaths, 0);
    EXPECT_TRUE(graph->RemoveEdge(edge.Get()));
    EXPECT_TRUE(edge->SetNodes(plain.Get(), plain.Get()));
    EXPECT_EQ(deaths, 2);
    EXPECT_FALSE(edge);
    // A node whose death changes the graph, and the death of the graph.
    edge = VObjectRef<VGraphEdge>::Adopt(VGraphEdge::New());
    edge->SetNodes(plain.Get(), addDying([&] { raw->RemoveNode(plain.Get()); }));
    EXPECT_TRUE(graph->AddEdge(edge.Get()));
    edge.Exchange(nullptr);
    EXPECT_TRUE(graph->RemoveNode(NodeAt(graph, 0)));
    EXPECT_EQ(graph->EdgeCount(), 0);
    addDying([&] { EXPECT_TRUE(raw->AddNode(plain.Get())); });
    graph = GraphRef();
    EXPECT_EQ(plain->Graph(), nullptr);
    EXPECT_EQ(plain->RetainCount(), 1);
    EXPECT_EQ(deaths, 4);
}

TEST_F(VGraphTest, IsUnchangedWhenACopyThrows) {
    long const existing = VGraph::TheClass()->Existing();
    GraphRef const graph = GraphOf(2, {{0, 1}});
    graph->AddNode(NodeRef::Adopt(new ALastNode([] {})).Get());
    GraphRef const target = GraphOf(3, {{0, 1}, {1, 2}});
    NodeRef const node(NodeAt(target, 0));
    target->SetChanged(false);
    EXPECT_THROW(*target = *graph, int);
    EXPECT_EQ(node->Graph(), target.Get());
    EXPECT_EQ(EndsOf(target), (Ends{{0, 1}, {1, 2}}));
    EXPECT_FALSE(target->Changed());
    EXPECT_THROW((void)graph->CopyGraph(), int);
    EXPECT_THROW((void)graph->CreateSubGraphWithNodes(&graph->Nodes()), int);
    EXPECT_EQ(VGraph::TheClass()->Existing(), existing + 2);
    // A value that cannot be copied leaves the node as it was.
    NodeAt(graph, 0)->Properties().SetObjectForKey(NodeAt(graph, 2), &m_key);
    NodeAt(graph, 0)->SetAttrib(7);
    long const id = node->NodeID();
    EXPECT_THROW(*node = *NodeAt(graph, 0), int);
    EXPECT_EQ(node->NodeID(), id);
    EXPECT_EQ(node->Attrib(), 0);
}

TEST_F(VGraphTest, ReplacesANodeButLeavesTheSecondEndOfALoop) {
    GraphRef const graph = GraphOf(3, {{0, 1}, {1, 2}, {1, 1}, {2, 0}});
    NodeRef const oldNode(NodeAt(graph, 1));
    NodeRef const newNode = NodeRef::Adopt(VGraphNode::New());
    EXPECT_TRUE(graph->ReplaceNode(oldNode.Get(), newNode.Get()));
    EXPECT_EQ(EndsOf(graph), (Ends{{0, 1}, {1, 2}, {1, -1}, {2, 0}}));
    EXPECT_EQ(EdgeAt(graph, 2)->Node2(), oldNode.Get());
    EXPECT_EQ(oldNode->Graph(), nullptr);
    EXPECT_EQ(newNode->Graph(), graph.Get());
    EXPECT_TRUE(graph->ReplaceNode(NodeAt(graph, 0), NodeAt(graph, 0))); // by itself
    EXPECT_EQ(NodeAt(graph, 0)->Graph(), graph.Get());
    EXPECT_TRUE(graph->ReplaceNode(NodeAt(graph, 2), oldNode.Get())); // held by nothing else
    EXPECT_EQ(EndsOf(graph), (Ends{{0, 1}, {1, 2}, {1, 2}, {2, 0}}));
}

TEST_F(VGraphTest, NumbersNodesAndEdgesByPlace) {
    GraphRef const graph = GraphOf(3, {{2, 0}, {1, 1}, {-1, 2}});
    graph->AssignUniqueIDs();
    EXPECT_EQ(IDsOf(graph), (IDs{0, 1, 2}));
    EXPECT_EQ(EdgeAt(graph, 2)->SourceNodeID(), -1);
    graph->AssignUniqueIDsToAllNodes(40);
    graph->AssignUniqueIDsToAllEdges(7);
    EXPECT_EQ(EdgeAt(graph, 1)->EdgeID(), 8);
    EXPECT_EQ(EdgeAt(graph, 0)->SourceNodeID(), 2); // until the edges look
    graph->UpdateEdgeNodeIDs();
    EXPECT_EQ(EdgeAt(graph, 0)->SourceNodeID(), 42);
    NodeAt(graph, 2)->SetNodeID(40);
    EXPECT_EQ(graph->NodeForID(40), NodeAt(graph, 0)); // the first
    EXPECT_EQ(graph->NodeForID(43), nullptr);
    graph->AssignUniqueIDsToAllNodes(1); // as places, one too many
    graph->UpdateEdgeNodeIDs();
    graph->UpdateEdgesFromIDs();
    EXPECT_EQ(EndsOf(graph), (Ends{{-1, 1}, {2, 2}, {-1, -1}}));
}

TEST_F(VGraphTest, CopiesNodesAndEdgesButNotTheRest) {
    GraphRef const graph = GraphOf(2, {{1, 0}, {0, -1}}, AnotherGraph::New());
    auto const value = VObjectRef<VString>::Adopt(VString::NewString("first"));
    NodeAt(graph, 0)->Properties().SetObjectForKey(value.Get(), &m_key);
    graph->Properties().SetObjectForKey(value.Get(), &m_key);
    GraphRef const copy = GraphRef::Adopt(graph->Copy());
    EXPECT_STREQ(copy->ClassName(), "AnotherGraph");
    EXPECT_EQ(EndsOf(copy), EndsOf(graph));
    EXPECT_EQ(IDsOf(copy), IDsOf(graph));
    VObject const* const copied = NodeAt(copy, 0)->Properties().ObjectForKey(&m_key);
    ASSERT_NE(copied, nullptr);
    EXPECT_NE(copied, value.Get());
    EXPECT_TRUE(copied->IsEqual(*value));
    EXPECT_TRUE(NodeAt(copy, 0)->Graph() == nullptr);
    EXPECT_EQ(copy->Properties().Count(), 0);
    EXPECT_TRUE(copy->Changed());
    // Assignment lets go of what was there; onto itself it changes nothing.
    GraphRef const target = GraphOf(3, {{0, 1}});
    NodeRef const former(NodeAt(target, 0));
    *target = *graph;
    EXPECT_EQ(former->Graph(), nullptr);
    VGraphNode* const first = NodeAt(target, 0);
    *target = static_cast<VGraph const&>(*target);
    EXPECT_EQ(NodeAt(target, 0), first);
    // Of nodes with the same id the first gets the edges, in whatever order the ids are.
    GraphRef const mixed = GraphOf(200, {{199, 2}, {0, 1}});
    for (long place = 0; place < 200; ++place) {
        NodeAt(mixed, place)->SetNodeID(place == 3 ? -10 : place % 2 ? 7 : 300 - place);
    }
    mixed->UpdateEdgeNodeIDs();
    EXPECT_EQ(EndsOf(GraphRef::Adopt(mixed->CopyGraph())), (Ends{{1, 2}, {0, 1}}));
}

TEST_F(VGraphTest, MakesAPartOfChosenNodes) {
    GraphRef const graph = GraphOf(5, {{0, 1}, {1, 3}, {3, 3}, {3, 1}, {4, 0}, {2, 3}, {1, -1}});
    VGraph::NodeArray chosen;
    for (long const place : {3L, 0L, 1L}) {
        chosen.AddObject(NodeAt(graph, place));
    }
    GraphRef const part = GraphRef::Adopt(graph->CreateSubGraphWithNodes(&chosen));
    EXPECT_EQ(EndsOf(part), (Ends{{1, 2}, {2, 0}, {0, 0}, {0, 2}}));
    EXPECT_EQ(IDsOf(part), (IDs{0, 1, 2}));
    EXPECT_EQ(EdgeAt(part, 1)->SourceNodeID(), 2);
    EXPECT_EQ(EdgeAt(part, 3)->EdgeID(), 3);
    EXPECT_EQ(NodeAt(part, 0)->Graph(), nullptr);
    EXPECT_EQ(graph->CreateSubGraphWithNodes(nullptr), nullptr);
}

TEST_F(VGraphTest, MergesAndDetachesItsNodesWhenItDies) {
    GraphRef const graph = GraphOf(2, {{0, 1}});
    GraphRef other = GraphOf(2, {{1, 0}, {1, 1}});
    VGraphNode* const shared = NodeAt(other, 1);
    EXPECT_FALSE(graph->MergeWithGraph(nullptr));
    EXPECT_TRUE(graph->MergeWithGraph(other.Get()));
    EXPECT_EQ(EndsOf(graph), (Ends{{0, 1}, {3, 2}, {3, 3}}));
    EXPECT_EQ(EdgeAt(graph, 1)->SourceNodeID(), 3);
    EXPECT_EQ(shared->Graph(), other.Get());
    graph->AddNode(NodeAt(other, 0));
    other = GraphRef();
    EXPECT_EQ(shared->Graph(), nullptr);
    EXPECT_EQ(NodeAt(graph, 4)->Graph(), graph.Get()); // that is where it belongs now
    EXPECT_TRUE(graph->MergeWithGraph(graph.Get()));
    EXPECT_EQ(graph->EdgeCount(), 6);
    EXPECT_EQ(shared->NodeID(), 8); // the last place counts
}

TEST_F(VGraphTest, ComesBackFromXMLButForTheIds) {
    GraphRef const graph = GraphOf(2, {{1, 0}, {0, 0}, {-1, 1}});
    auto const value = VObjectRef<VString>::Adopt(VString::NewString("10, 20"));
    graph->Properties().SetObjectForKey(value.Get(), &m_key);
    NodeAt(graph, 1)->Properties().SetObjectForKey(value.Get(), VGraphNode::ms_keyScreenXY);
    std::string const text = XMLOf(graph);
    EXPECT_EQ(
        text.substr(text.find("<VObjectArray name=\"nodes\"")),
        "<VObjectArray name=\"nodes\" count=\"2\"><VGraphNode>"
        "<VDictionary name=\"properties\" version=\"2\" count=\"0\" /></VGraphNode><VGraphNode>"
        "<VDictionary name=\"properties\" version=\"2\" count=\"1\"><VDictionaryPair>"
        "<VString string=\"screen_XY\" /><VString string=\"10, 20\" /></VDictionaryPair></VDictionary>"
        "</VGraphNode></VObjectArray><VObjectArray name=\"edges\" count=\"3\">"
        "<VGraphEdge srcNode_ID=\"1\" dstNode_ID=\"0\" /><VGraphEdge srcNode_ID=\"0\" dstNode_ID=\"0\" />"
        "<VGraphEdge srcNode_ID=\"-1\" dstNode_ID=\"1\" /></VObjectArray></VGraph></Root>");
    GraphRef const read = GraphOf(2, {{0, 1}});
    NodeRef const former(NodeAt(read, 1));
    EXPECT_TRUE(Read(text, read));
    EXPECT_EQ(former->Graph(), nullptr);
    EXPECT_EQ(IDsOf(read), (IDs{0, 1}));
    EXPECT_EQ(EdgeAt(read, 2)->EdgeID(), 2);
    EXPECT_EQ(NodeAt(read, 1)->Graph(), read.Get());
    EXPECT_EQ(XMLOf(read), text);
}

TEST_F(VGraphTest, PassesOverEntriesThatAreNoNodesOrEdges) {
    GraphRef const graph = GraphRef::Adopt(VGraph::New());
    std::string report;
    EXPECT_FALSE(Read("<Root><VGraph><VObjectArray name='nodes'><VGraphNode/><VString string='x'/><VNoClass/>"
                      "<VGraphNode/></VObjectArray><VObjectArray name='edges'><VGraphNode/>"
                      "<VGraphEdge srcNode_ID='0' dstNode_ID='2'/><VGraphEdge srcNode_ID='1' dstNode_ID='3'/>"
                      "<VGraphEdge dstNode_ID='99999999999'/></VObjectArray></VGraph></Root>",
                      graph, &report)); // properties are missing
    EXPECT_EQ(report, "Root/VGraph/VObjectArray/VGraphNode: not read (VGraphNode)\n"
                      "Root/VGraph/VObjectArray/VNoClass: unknown class (VNoClass)\n"
                      "Root/VGraph/VObjectArray/VGraphNode[2]: not read (VGraphNode)\n"
                      "Root/VGraph/VObjectArray[2]/VGraphNode: not read (VGraphNode)\n"
                      "Root/VGraph: not made (node of an edge)\nRoot/VGraph: not made (node of an edge)\n"
                      "Root/VGraph: wrong kind (VString)\nRoot/VGraph: wrong kind (VGraphNode)\n");
    graph->Nodes().AddObject(nullptr);
    graph->AssignUniqueIDs();
    std::string const expected = "VGraph::SerializeAsXML - node expected to be VGraphNode: ";
    EXPECT_TRUE(m_lines->Has(expected + "VString\n"));
    EXPECT_TRUE(m_lines->Has(expected + "NULL\n"));
    EXPECT_EQ(graph->NodeForID(1), NodeAt(graph, 2)); // without a gap
    EXPECT_EQ(EdgeAt(graph, 1)->Node2(), NodeAt(graph, 2));
    for (long const place : {2L, 3L}) { // ends at the string and beyond
        EXPECT_FALSE(EdgeAt(graph, place)->Node1());
        EXPECT_FALSE(EdgeAt(graph, place)->Node2());
    }
    GraphRef const copy = GraphRef::Adopt(graph->CopyGraph());
    EXPECT_EQ(EdgeAt(copy, 1)->Node2(), NodeAt(copy, 2));
    // The string has a place but no number: the edge comes back one place earlier, where the string stands.
    EXPECT_TRUE(Read(XMLOf(graph), copy));
    EXPECT_EQ(EdgeAt(copy, 1)->DestinationNodeID(), -1);
    EXPECT_TRUE(copy->MergeWithGraph(graph.Get()));
    EXPECT_TRUE(copy->RemoveNode(NodeAt(copy, 0)));
    EXPECT_EQ(copy->EdgeCount(), 7);
}

// An algorithm that looks at every node for every edge takes minutes here.
TEST_F(VGraphTest, TakesTimeInProportionToItsSize) {
    Ends edges;
    for (long i = 0; i < 300000; ++i) {
        edges.emplace_back(i % 100000, i % 3 == 0 ? 0 : i * 7919 % 100000);
    }
    GraphRef const graph = GraphOf(100000, edges);
    NodeAt(graph, 5)->SetNodeID(NodeAt(graph, 6)->NodeID());
    graph->UpdateEdgeNodeIDs();
    GraphRef const copy = GraphRef::Adopt(graph->CopyGraph());
    GraphRef const part = GraphRef::Adopt(copy->CreateSubGraphWithNodes(&copy->Nodes()));
    EXPECT_EQ(part->EdgeCount(), 300000);
    EXPECT_TRUE(part->MergeWithGraph(copy.Get()));
    for (std::size_t i = 0; i < edges.size(); i += 997) {
        EXPECT_EQ(EdgeAt(copy, static_cast<long>(i))->Node2(), NodeAt(copy, edges[i].second));
    }
    EXPECT_TRUE(graph->RemoveNode(NodeAt(graph, 0))); // which a third of the edges touches
    EXPECT_LT(graph->EdgeCount(), 200001);
}

} // namespace
