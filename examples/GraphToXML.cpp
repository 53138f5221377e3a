// Builds a small graph, saves it as XML, loads it again, shows what came back and draws it.
//   example_GraphToXML roads.xml roads.svg

#include "foundation/VFoundation.h"

#include <cstdio>

using namespace VFoundation;

namespace {

bool Save(char const* path) {
    auto const roads = MakeObject<VGraph>();
    VGraphNode* const aston = roads->AddNamedNode("Aston");
    VGraphNode* const barley = roads->AddNamedNode("Barley");
    VGraphNode* const corby = roads->AddNamedNode("Corby");
    roads->Connect(aston, barley);
    roads->Connect(barley, corby);

    VXMLFile file;
    bool const isSaved = file.SaveObject(path, "Map", *roads);
    if (!isSaved) {
        std::fprintf(stderr, "%s\n", file.ErrorDescription().CString());
    }
    return isSaved;
}

VString NameOf(VGraphNode const* town) {
    auto const* const name = town ? static_cast<VString*>(town->Properties().ObjectForKey("name")) : nullptr;
    return name ? *name : "nowhere";
}

bool LoadAndShow(char const* path, char const* picturePath) {
    auto const roads = MakeObject<VGraph>();
    VXMLFile file;
    if (!file.LoadObject(path, "Map", *roads)) {
        std::fprintf(stderr, "%s\n", file.ErrorDescription().CString());
        return false;
    }
    std::printf("%li towns, %li roads\n", roads->NodeCount(), roads->EdgeCount());
    for (VGraphEdge const* const road : roads->Edges()) {
        std::printf("  from %s to %s\n", NameOf(road->Node1()).CString(), NameOf(road->Node2()).CString());
    }
    VGraphPicture picture(*roads);
    bool const isDrawn = picture.WriteSVG(picturePath);
    if (!isDrawn) {
        std::fprintf(stderr, "%s\n", picture.ErrorDescription().CString());
    }
    return isDrawn;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s <XML file> <SVG file>\n", argv[0]);
        return 2;
    }
    LibraryScope const library;
    return Save(argv[1]) && LoadAndShow(argv[1], argv[2]) ? 0 : 1;
}
