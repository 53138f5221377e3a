#pragma once

#include "foundation/graph/internal/GraphDrawing.h"
#include "tools/vfinspect/Report.h"
#include "tools/vfinspect/XmlScanner.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vfinspect {

/// The first graph of a document: what a drawing needs of its nodes and edges.
class Graph final : private XmlHandler {
  public:
    using Node = VFoundation::GraphDrawing::Node;
    using Edge = VFoundation::GraphDrawing::Edge;

    /// `text` is a document that `XmlInspector` read.
    explicit Graph(std::string_view text);

    /// Labels are printable: the property "name", else the first text, else the number. Edges end at positions, as the
    /// file has them, or at no node, -1.
    VFoundation::GraphDrawing const& Drawing() const noexcept { return m_drawing; }

    /// Edges that end at nodes that are not there.
    void Check(Report& report) const;

  private:
    enum class Role { kOther, kGraph, kNodes, kEdges, kNode, kEdge, kPair };
    struct Element {
        Role role;
        int children; // elements so far
        bool isString;
    };

    void OnStart(std::size_t offset, std::string_view name,
                 std::vector<XmlAttribute> const& attributes) override;
    void OnEnd(std::size_t end) override;
    void OnText(std::size_t offset, std::string_view text, bool isCData) override;
    void OnOther(std::size_t, std::size_t, char const*) override {}

    Role RoleOf(std::string_view className, std::string_view name) const;
    bool IsInNode() const noexcept { return m_nodeDepth > 0; }
    void TakeText(std::string_view text);
    void TakePoint(std::vector<XmlAttribute> const& attributes);

    VFoundation::GraphDrawing m_drawing;
    std::vector<std::size_t> m_edgeOffsets;
    std::vector<Element> m_open;
    std::size_t m_nodeDepth = 0; // the depth of the node that is open, 0 for none
    bool m_hasGraph = false;
    std::string m_key; // of the pair that is open
    bool m_hasNamedLabel = false;
};

} // namespace vfinspect
