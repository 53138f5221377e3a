// Copying a graph of 100 000 nodes and 300 000 edges, against two written by hand: adjacency lists of indexes, and
// counted node and edge objects that refer to each other, each node with two empty lists as a dictionary has. Then
// saving and loading the graph as XML.

#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/graph/VGraph.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace VFoundation;

struct Library {
    Library() { InitializeLibrary(false); }
};
Library const s_library;

constexpr long kNodes = 100000;
constexpr long kEdges = 300000;

long From(long edge) {
    return edge % kNodes;
}
long To(long edge) {
    return edge * 7919 % kNodes;
}

VObjectRef<VGraph> MakeGraph() {
    auto graph = VObjectRef<VGraph>::Adopt(VGraph::New());
    std::vector<VGraphNode*> nodes;
    for (long i = 0; i < kNodes; ++i) {
        auto const node = VObjectRef<VGraphNode>::Adopt(VGraphNode::New());
        graph->AddNode(node.Get());
        nodes.push_back(node.Get());
    }
    for (long i = 0; i < kEdges; ++i) {
        auto const edge = VObjectRef<VGraphEdge>::Adopt(VGraphEdge::New());
        edge->SetNodes(nodes[static_cast<std::size_t>(From(i))], nodes[static_cast<std::size_t>(To(i))]);
        graph->AddEdge(edge.Get());
    }
    return graph;
}

void CopyGraph(benchmark::State& state) {
    auto const graph = MakeGraph();
    for (auto _ : state) {
        auto const copy = VObjectRef<VGraph>::Adopt(graph->CopyGraph());
        benchmark::DoNotOptimize(copy->EdgeCount());
    }
}
BENCHMARK(CopyGraph)->Name("Copy")->Unit(benchmark::kMillisecond);

struct AdjacencyNode {
    std::int32_t id = 0;
    std::int32_t attrib = 0;
    std::vector<std::int32_t> neighbours;
};

void CopyAdjacency(benchmark::State& state) {
    std::vector<AdjacencyNode> graph(kNodes);
    for (long i = 0; i < kEdges; ++i) {
        graph[static_cast<std::size_t>(From(i))].neighbours.push_back(static_cast<std::int32_t>(To(i)));
    }
    for (auto _ : state) {
        auto const copy = graph;
        benchmark::DoNotOptimize(copy.data());
    }
}
BENCHMARK(CopyAdjacency)->Name("Copy, adjacency lists of indexes")->Unit(benchmark::kMillisecond);

struct Node {
    std::int32_t id = 0;
    std::int32_t attrib = 0;
    std::shared_ptr<std::vector<std::shared_ptr<void>>> keys =
        std::make_shared<std::vector<std::shared_ptr<void>>>();
    std::shared_ptr<std::vector<std::shared_ptr<void>>> values =
        std::make_shared<std::vector<std::shared_ptr<void>>>();
};
struct Edge {
    std::shared_ptr<Node> from, to;
    std::int32_t id = 0;
};
struct Graph {
    std::vector<std::shared_ptr<Node>> nodes;
    std::vector<std::shared_ptr<Edge>> edges;

    Graph Copy() const {
        Graph copy;
        copy.nodes.reserve(nodes.size());
        copy.edges.reserve(edges.size());
        for (auto const& node : nodes) {
            copy.nodes.push_back(std::make_shared<Node>());
            copy.nodes.back()->id = node->id;
            copy.nodes.back()->attrib = node->attrib;
        }
        auto const copyOf = [&copy](Node const& node) { // ids are places here
            return copy.nodes[static_cast<std::size_t>(node.id)];
        };
        for (auto const& edge : edges) {
            copy.edges.push_back(
                std::make_shared<Edge>(Edge{copyOf(*edge->from), copyOf(*edge->to), edge->id}));
        }
        return copy;
    }
};

void CopySharedPointers(benchmark::State& state) {
    Graph graph;
    for (long i = 0; i < kNodes; ++i) {
        graph.nodes.push_back(std::make_shared<Node>());
        graph.nodes.back()->id = static_cast<std::int32_t>(i);
    }
    for (long i = 0; i < kEdges; ++i) {
        graph.edges.push_back(std::make_shared<Edge>(Edge{graph.nodes[static_cast<std::size_t>(From(i))],
                                                          graph.nodes[static_cast<std::size_t>(To(i))],
                                                          static_cast<std::int32_t>(i)}));
    }
    for (auto _ : state) {
        Graph const copy = graph.Copy();
        benchmark::DoNotOptimize(copy.edges.data());
    }
}
BENCHMARK(CopySharedPointers)->Name("Copy, objects by std::shared_ptr")->Unit(benchmark::kMillisecond);

VString Saved(VGraph const& graph) {
    VString text;
    VXMLFile file;
    file.WriteFileToString(text, "Root");
    file.WriteObject("graph", graph);
    file.CloseFile();
    return text;
}

void SaveGraph(benchmark::State& state) {
    auto const graph = MakeGraph();
    for (auto _ : state) {
        benchmark::DoNotOptimize(Saved(*graph).Length());
    }
}
BENCHMARK(SaveGraph)->Name("Save as XML")->Unit(benchmark::kMillisecond);

void LoadGraph(benchmark::State& state) {
    VString const text = Saved(*MakeGraph());
    for (auto _ : state) {
        VXMLFile file;
        file.LoadFile("text", reinterpret_cast<unsigned char const*>(text.CString()), text.Length(), "Root");
        auto const graph = VObjectRef<VGraph>::Adopt(VGraph::New());
        if (!file.ReadObject("graph", graph.Get()) || graph->EdgeCount() != kEdges) {
            state.SkipWithError("not loaded");
        }
    }
}
BENCHMARK(LoadGraph)->Name("Load from XML")->Unit(benchmark::kMillisecond);

} // namespace
