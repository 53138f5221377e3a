#include "foundation/graph/VGraphPicture.h"
#include "foundation/graph/VGraph.h"
#include "foundation/host/VTemporaryFolder.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/VPoint.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <sys/stat.h>

namespace {

using namespace VFoundation;

class VGraphPictureTest : public testing::Test {
  protected:
    VGraphPictureTest() : m_path(getenv("PATH")) {}
    ~VGraphPictureTest() override { setenv("PATH", m_path.c_str(), 1); }

    std::string Path(char const* name) const { return m_folder.Path() + "/" + name; }
    std::string Contents(char const* name) const {
        std::ostringstream text;
        text << std::ifstream(Path(name)).rdbuf();
        return text.str();
    }
    /// Puts a program "dot" into the folder, which becomes the first in the PATH.
    void PretendGraphviz(char const* script) const {
        std::ofstream(Path("dot")) << "#!/bin/sh\n" << script;
        chmod(Path("dot").c_str(), 0700);
        setenv("PATH", (m_folder.Path() + ":" + m_path).c_str(), 1);
    }

    VTemporaryFolder const m_folder;
    std::string const m_path;
    VObjectRef<VGraph> const m_graph = MakeObject<VGraph>();
};

TEST_F(VGraphPictureTest, NoNameEndsItsLabel) {
    VGraphNode* const first = m_graph->AddNamedNode("a\"]; b [label=\"\\");
    m_graph->Connect(first, m_graph->AddNamedNode("<b> & \n\xFF\x01"));
    m_graph->Connect(first, nullptr);
    m_graph->Nodes().AddObject(MakeObject<VString>("no node").Get());
    std::string const umlauts = "123456789012345678901234567890123456789\xC3\xA4";
    m_graph->AddNamedNode(umlauts);
    m_graph->AddNode(MakeObject<VGraphNode>().Get());
    EXPECT_EQ(VGraphPicture(*m_graph).Dot(), "digraph {\n    node [shape=box, style=rounded];\n"
                                             "    0 [label=\"a\\\"]; b [label=\\\"\\\\\"];\n"
                                             "    1 [label=\"&lt;b&gt; &amp;  \xEF\xBF\xBD\xEF\xBF\xBD\"];\n"
                                             "    2 [label=\"123456789012345678901234567890123456789...\"];\n"
                                             "    3 [label=\"3\"];\n"
                                             "    0 -> 1;\n}\n");
}

TEST_F(VGraphPictureTest, DrawsNodesAtTheirPlaces) {
    for (int i = 0; i < 2; ++i) {
        auto const place = MakeObject<VPoint>(SPoint{100 * i, 50 * i});
        m_graph->AddNamedNode(i ? "<Barley>" : "Aston")
            ->Properties()
            .SetObjectForKey(place.Get(), "screen_XY");
    }
    VGraphPicture picture(*m_graph);
    ASSERT_TRUE(picture.WriteSVG(Path("a.svg").c_str()));
    EXPECT_NE(Contents("a.svg").find("<text x=\"80\" y=\"44\" text-anchor=\"middle\">Aston</text>"),
              std::string::npos);
    EXPECT_NE(Contents("a.svg").find("<text x=\"180\" y=\"94\" text-anchor=\"middle\">&lt;Barley&gt;</text>"),
              std::string::npos);
    EXPECT_TRUE(picture.WriteDot(Path("a.dot").c_str()));
    EXPECT_EQ(Contents("a.dot"), picture.Dot());
    EXPECT_FALSE(picture.WriteDot("/none/a.dot"));
    EXPECT_EQ(picture.ErrorDescription(), "cannot write /none/a.dot: No such file or directory");
}

TEST_F(VGraphPictureTest, RunsGraphviz) {
    m_graph->Connect(m_graph->AddNamedNode("$(touch evil)"), m_graph->AddNamedNode("`touch evil`"));
    VGraphPicture picture(*m_graph);
    std::string const svg = Path("a.svg");
    PretendGraphviz("cat\necho \"$@\"\n");
    ASSERT_TRUE(picture.WriteSVGByGraphviz(svg.c_str())) << picture.ErrorDescription().CString();
    EXPECT_EQ(Contents("a.svg"), picture.Dot() + "-Tsvg\n");

    std::string const before = Contents("a.svg");
    PretendGraphviz("echo half\necho 'no such layout' >&2\nexit 1\n");
    EXPECT_FALSE(picture.WriteSVGByGraphviz(svg.c_str()));
    EXPECT_EQ(picture.ErrorDescription(), "cannot write " + svg + ": Graphviz failed: no such layout");
    for (char const* const script : {"exec sleep 600\n", "exec sleep 600 2>&-\n"}) {
        PretendGraphviz(script);
        EXPECT_FALSE(picture.WriteSVGByGraphviz(svg.c_str(), 1));
        EXPECT_EQ(picture.ErrorDescription(), "cannot write " + svg + ": Graphviz took longer than 1 s");
    }
    setenv("PATH", "/none", 1);
    EXPECT_FALSE(picture.WriteSVGByGraphviz(svg.c_str()));
    EXPECT_EQ(picture.ErrorDescription(),
              "cannot write " + svg + ": Graphviz is not installed (no program 'dot' in the PATH)");
    EXPECT_EQ(Contents("a.svg"), before) << "a failure keeps the old picture";

    setenv("PATH", m_path.c_str(), 1);
    ASSERT_TRUE(picture.WriteSVGByGraphviz(svg.c_str())) << picture.ErrorDescription().CString();
    EXPECT_NE(Contents("a.svg").find(">$(touch evil)</text>"), std::string::npos);
}

} // namespace
