// Graphs in XML: what comes back, and what comes of documents that are not what they should be.

#include "foundation/containers/VDictionaryPair.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "tests/graph/GraphTestSupport.h"
#include "tests/support/LineLog.h"
#include "tests/support/ScratchFile.h"

namespace {

using namespace graph_test;

class GraphXML : public testing::Test {
  protected:
    GraphXML() {
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory);
        for (VClass* (*const theClass)() :
             {&VGraph::TheClass, &VGraphEdge::TheClass, &VGraphNode::TheClass, &VObjectArray::TheClass,
              &VDictionary::TheClass, &VDictionaryPair::TheClass, &VString::TheClass, &VXMLFile::TheClass}) {
            theClass();
        }
    }
    ~GraphXML() override { VXMLFile::ClearIXMLFileIOFactory(); }

    static std::string XMLOf(VGraph const& graph) {
        VString text;
        VXMLFile file;
        EXPECT_TRUE(file.WriteFileToString(text, "Root"));
        EXPECT_TRUE(file.WriteObject("graph", graph));
        EXPECT_TRUE(file.CloseFile());
        return text.CString();
    }
    /// Whether the graph found all that it looked for.
    static bool Read(std::string const& text, VGraph& graph) {
        VXMLFile file;
        auto const* const bytes = reinterpret_cast<unsigned char const*>(text.c_str());
        EXPECT_TRUE(file.LoadFile("text", bytes, text.size(), "Root") && file.OpenFirstChildElement("VGraph"))
            << text;
        return graph.SerializeAsXML(file);
    }

    testing_support::LineLogScope m_lines;
};

TEST_F(GraphXML, BringsEverythingBackButTheIds) {
    GraphRef const graph = GraphOf(3, {{2, 0}, {1, 1}, {0, 1}});
    AddEdge(*graph, NodeAt(*graph, 1), nullptr);
    AddEdge(*graph, nullptr, nullptr);
    SetProperty(graph->Properties(), "title", "a graph");
    SetProperty(NodeAt(*graph, 2)->Properties(), VGraphNode::ms_keyScreenXY->CString(), "10, 20");
    std::string const text = XMLOf(*graph);
    EXPECT_EQ(IDsOf(*graph), (IDs{0, 1, 2})); // saving numbers

    GraphRef const read = GraphOf(2, {{0, 1}});
    SetProperty(read->Properties(), "other", "stays");
    VObjectRef<VGraphNode> const former(NodeAt(*read, 1));
    EXPECT_TRUE(Read(text, *read));
    EXPECT_EQ(former->Graph(), nullptr);
    EXPECT_EQ(EndsOf(*read), (Ends{{2, 0}, {1, 1}, {0, 1}, {1, -1}, {-1, -1}}));
    EXPECT_EQ(IDsOf(*read), (IDs{0, 1, 2}));
    EXPECT_EQ(EdgeAt(*read, 4)->EdgeID(), 4);
    EXPECT_EQ(NodeAt(*read, 2)->Graph(), read.Get());
    EXPECT_EQ(PropertyOf(read->Properties(), "title"), "a graph");
    EXPECT_EQ(PropertyOf(read->Properties(), "other"), "stays");
    EXPECT_EQ(PropertyOf(NodeAt(*read, 2)->Properties(), "screen_XY"), "10, 20");
    EXPECT_EQ(PropertyOf(NodeAt(*read, 0)->Properties(), "screen_XY"), "(none)");
    GraphRef const fresh = GraphRef::Adopt(VGraph::New());
    EXPECT_TRUE(Read(text, *fresh));
    EXPECT_EQ(XMLOf(*fresh), text);
    EXPECT_TRUE(m_lines->Lines().empty());
}

TEST_F(GraphXML, HasThisForm) {
    EXPECT_EQ(XMLOf(*GraphOf(2, {{1, 0}})),
              "<Root><VGraph name=\"graph\"><VDictionary name=\"properties\" version=\"2\" count=\"0\" />"
              "<VObjectArray name=\"nodes\" count=\"2\">"
              "<VGraphNode><VDictionary name=\"properties\" version=\"2\" count=\"0\" /></VGraphNode>"
              "<VGraphNode><VDictionary name=\"properties\" version=\"2\" count=\"0\" "
              "/></VGraphNode></VObjectArray>"
              "<VObjectArray name=\"edges\" count=\"1\"><VGraphEdge srcNode_ID=\"1\" dstNode_ID=\"0\" />"
              "</VObjectArray></VGraph></Root>");
}

TEST_F(GraphXML, GivesEdgesNoEndsWhereThereIsNoNode) {
    GraphRef const graph = GraphRef::Adopt(VGraph::New());
    EXPECT_FALSE(Read("<Root><VGraph><VObjectArray name='nodes'><VGraphNode/><VGraphNode/></VObjectArray>"
                      "<VObjectArray name='edges'><VGraphEdge srcNode_ID='-1' dstNode_ID='1'/>"
                      "<VGraphEdge srcNode_ID='2' dstNode_ID='0'/><VGraphEdge dstNode_ID='99999999999'/>"
                      "<VGraphEdge srcNode_ID='' dstNode_ID='1x'/></VObjectArray></VGraph></Root>",
                      *graph)); // properties are missing
    EXPECT_EQ(EndsOf(*graph), (Ends{{-1, 1}, {-1, 0}, {-1, -1}, {-1, 1}}));
    EXPECT_EQ(EdgeAt(*graph, 1)->SourceNodeID(), -1);
}

TEST_F(GraphXML, KeepsForeignObjectsApart) {
    GraphRef const graph = GraphRef::Adopt(VGraph::New());
    EXPECT_TRUE(Read("<Root><VGraph><VDictionary name='properties' version='2' count='0'/>"
                     "<VObjectArray name='nodes'><VGraphNode/><VString string='x'/><VNoClass/><VGraphNode/>"
                     "<VGraphEdge srcNode_ID='0' dstNode_ID='0'/></VObjectArray><VObjectArray name='edges'>"
                     "<VGraphNode/><VGraphEdge srcNode_ID='0' dstNode_ID='2'/>"
                     "<VGraphEdge srcNode_ID='1' dstNode_ID='3'/></VObjectArray></VGraph></Root>",
                     *graph));
    EXPECT_EQ(graph->NodeCount(), 4);
    EXPECT_EQ(graph->EdgeCount(), 3);
    EXPECT_EQ(NodeAt(*graph, 2)->NodeID(), 1);
    EXPECT_EQ(EdgeAt(*graph, 1)->Node2(), NodeAt(*graph, 2));
    EXPECT_EQ(EdgeAt(*graph, 2)->Node1(), nullptr); // places with a string and an edge
    EXPECT_EQ(EdgeAt(*graph, 2)->Node2(), nullptr);
    EXPECT_TRUE(m_lines->Has("VGraph::SerializeAsXML - node expected to be VGraphNode: VString\n"));
    EXPECT_TRUE(m_lines->Has("VGraph::SerializeAsXML - node expected to be VGraphNode: VGraphEdge\n"));
    EXPECT_TRUE(m_lines->Has("VObjectArray::SerializeAsXML - No class for className 'VNoClass'\n"));
    // Every operation passes over them.
    EXPECT_TRUE(graph->MergeWithGraph(GraphRef::Adopt(graph->CopyGraph()).Get()));
    EXPECT_EQ(GraphRef::Adopt(graph->CreateSubGraphWithNodes(&graph->Nodes()))->NodeCount(), 8);
    // The string has a place but no number: the edge comes back one place earlier, where the string stands.
    GraphRef const again = GraphRef::Adopt(VGraph::New());
    EXPECT_TRUE(Read(XMLOf(*graph), *again));
    EXPECT_EQ(EdgeAt(*again, 1)->DestinationNodeID(), -1);
    EXPECT_TRUE(graph->RemoveNode(NodeAt(*graph, 0)));
}

TEST_F(GraphXML, SurvivesEveryKindOfDamage) {
    GraphRef const graph = GraphOf(3, {{2, 0}, {1, 1}});
    SetProperty(NodeAt(*graph, 0)->Properties(), "p", "v");
    std::string const text = XMLOf(*graph);
    std::size_t const body = text.find("<VGraph");
    std::size_t const end = text.find("</VGraph>");
    for (std::size_t i = body + 8; i < end; ++i) {
        for (char const character : {'x', '"', '<', '/', '9'}) {
            std::string damaged = text;
            damaged[i] = character;
            VXMLFile file;
            if (file.LoadFile("text", reinterpret_cast<unsigned char const*>(damaged.c_str()), damaged.size(),
                              "Root") &&
                file.OpenFirstChildElement("VGraph")) {
                GraphRef const read = GraphRef::Adopt(VGraph::New());
                read->SerializeAsXML(file);
                EXPECT_LE(read->NodeCount(), 3);
                read->AssignUniqueIDs();
            }
        }
    }
}

TEST_F(GraphXML, SavesAndLoadsLargeGraphsInProportionToTheirSize) {
    constexpr long kNodes = 100000;
    constexpr long kEdges = 300000;
    testing_support::ScratchFile const scratch;
    {
        GraphRef const graph = GraphRef::Adopt(VGraph::New());
        std::vector<VGraphNode*> nodes;
        for (long i = 0; i < kNodes; ++i) {
            nodes.push_back(AddNode(*graph));
        }
        for (long i = 0; i < kEdges; ++i) {
            AddEdge(*graph, nodes[static_cast<std::size_t>(i % kNodes)],
                    nodes[static_cast<std::size_t>(i * 7919 % kNodes)]);
        }
        VXMLFile file;
        ASSERT_TRUE(file.OpenFileForWrite(scratch.Path(), "Root") && file.WriteObject("graph", *graph));
        ASSERT_TRUE(file.CloseFile());
    }
    VXMLFile file;
    ASSERT_TRUE(file.OpenFileForRead(scratch.Path(), "Root"));
    auto const read =
        GraphRef::Adopt(static_cast<VGraph*>(file.ReadAndCreateObject("graph", VGraph::TheClass())));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->NodeCount(), kNodes);
    EXPECT_EQ(read->EdgeCount(), kEdges);
    for (long i = 0; i < kEdges; i += 997) {
        EXPECT_EQ(EdgeAt(*read, i)->SourceNodeID(), i % kNodes);
        EXPECT_EQ(EdgeAt(*read, i)->Node2(), NodeAt(*read, i * 7919 % kNodes));
    }
}

} // namespace
