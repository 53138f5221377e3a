// Builds a small graph, saves it as XML, loads it again and shows what came back.
//   example_GraphToXML roads.xml

#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/graph/VGraph.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <cstdio>

using namespace VFoundation;

namespace {

/// Adds a node with a name (borrowed: the graph holds it).
VGraphNode* AddTown(VGraph& graph, char const* name) {
    auto const town = VObjectRef<VGraphNode>::Adopt(VGraphNode::New());
    VString const key("name");
    town->Properties().SetObjectForKey(VObjectRef<VString>::Adopt(VString::NewString(name)).Get(), &key);
    graph.AddNode(town.Get());
    return town.Get();
}

void AddRoad(VGraph& graph, VGraphNode* from, VGraphNode* to) {
    auto const road = VObjectRef<VGraphEdge>::Adopt(VGraphEdge::New());
    road->SetNodes(from, to);
    graph.AddEdge(road.Get());
}

char const* NameOf(VGraphNode const* town) {
    VString const key("name");
    auto const* const name =
        town ? static_cast<VString const*>(town->Properties().ObjectForKey(&key)) : nullptr;
    return name ? name->CString() : "nowhere";
}

bool Save(char const* path) {
    auto const graph = VObjectRef<VGraph>::Adopt(VGraph::New());
    VGraphNode* const aston = AddTown(*graph, "Aston");
    VGraphNode* const barley = AddTown(*graph, "Barley");
    VGraphNode* const corby = AddTown(*graph, "Corby");
    AddRoad(*graph, aston, barley);
    AddRoad(*graph, barley, corby);

    VXMLFile file;
    return file.OpenFileForWrite(path, "Map") && file.WriteObject("roads", graph.Get()) && file.CloseFile();
}

bool LoadAndShow(char const* path) {
    VXMLFile file;
    auto const graph = VObjectRef<VGraph>::Adopt(VGraph::New());
    if (!file.OpenFileForRead(path, "Map") || !file.ReadObject("roads", graph.Get())) {
        return false;
    }
    std::printf("%li towns, %li roads\n", graph->NodeCount(), graph->EdgeCount());
    for (long i = 0; i < graph->EdgeCount(); ++i) {
        VGraphEdge const* const road = graph->Edges().ObjectAtIndexTyped(i);
        std::printf("  from %s to %s\n", NameOf(road->Node1()), NameOf(road->Node2()));
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <XML file>\n", argv[0]);
        return 2;
    }
    InitializeLibrary(true);
    bool const done = Save(argv[1]) && LoadAndShow(argv[1]);
    bool const destroyRegistry = true;
    bool const dumpClasses = false;
    bool const quiet = true;
    UninitializeLibrary(destroyRegistry, dumpClasses, quiet);
    return done ? 0 : 1;
}
