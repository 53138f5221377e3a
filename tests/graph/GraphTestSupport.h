#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/graph/VGraph.h"
#include "foundation/strings/VString.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace graph_test {

using namespace VFoundation;

using GraphRef = VObjectRef<VGraph>;

/// A node added to the graph (borrowed).
inline VGraphNode* AddNode(VGraph& graph) {
    auto const node = VObjectRef<VGraphNode>::Adopt(VGraphNode::New());
    EXPECT_TRUE(graph.AddNode(node.Get()));
    return node.Get();
}

/// An edge added to the graph (borrowed).
inline VGraphEdge* AddEdge(VGraph& graph, VGraphNode* from, VGraphNode* to) {
    auto const edge = VObjectRef<VGraphEdge>::Adopt(VGraphEdge::New());
    EXPECT_TRUE(edge->SetNodes(from, to));
    EXPECT_TRUE(graph.AddEdge(edge.Get()));
    return edge.Get();
}

inline VGraphEdge* EdgeAt(VGraph const& graph, long index) {
    return graph.Edges().ObjectAtIndexTyped(index);
}

/// Where the ends of each edge stand in the array of nodes; -1 for no node.
inline std::vector<std::pair<long, long>> EndsOf(VGraph const& graph) {
    std::vector<std::pair<long, long>> ends;
    for (long i = 0; i < graph.EdgeCount(); ++i) {
        VGraphEdge const* const edge = EdgeAt(graph, i);
        ends.emplace_back(graph.Nodes().IndexOfObject(edge->Node1()),
                          graph.Nodes().IndexOfObject(edge->Node2()));
    }
    return ends;
}

using Ends = std::vector<std::pair<long, long>>;

inline std::vector<long> IDsOf(VGraph const& graph) {
    std::vector<long> ids;
    for (long i = 0; i < graph.NodeCount(); ++i) {
        ids.push_back(graph.Nodes().ObjectAtIndexTyped(i)->NodeID());
    }
    return ids;
}

using IDs = std::vector<long>;

/// A graph of this many nodes and an edge for each pair of their places.
inline GraphRef GraphOf(int nodes, Ends const& edges) {
    GraphRef graph = GraphRef::Adopt(VGraph::New());
    for (int i = 0; i < nodes; ++i) {
        AddNode(*graph);
    }
    for (auto const& [from, to] : edges) {
        AddEdge(*graph, graph->Nodes().ObjectAtIndexTyped(from), graph->Nodes().ObjectAtIndexTyped(to));
    }
    return graph;
}

inline VGraphNode* NodeAt(VGraph const& graph, long index) {
    return graph.Nodes().ObjectAtIndexTyped(index);
}

inline std::string PropertyOf(VDictionary const& properties, char const* name) {
    VString const key(name);
    auto const* const value = static_cast<VString const*>(properties.ObjectForKey(&key));
    return value ? value->CString() : "(none)";
}

inline void SetProperty(VDictionary& properties, char const* name, char const* value) {
    VString const key(name);
    properties.SetObjectForKey(VObjectRef<VString>::Adopt(VString::NewString(value)).Get(), &key);
}

} // namespace graph_test
