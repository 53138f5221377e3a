#pragma once

#include "tools/vfinspect/Report.h"
#include "tools/vfinspect/XmlScanner.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vfinspect {

/// The first graph of a document: what a drawing needs of its nodes and edges.
class Graph final : private XmlHandler {
  public:
    struct Place {
        double x;
        double y;
    };
    struct Node {
        std::size_t offset;
        std::string label; // printable: the property "name", else the first text, else the number
        std::optional<Place> place;
    };
    struct Edge {
        std::size_t offset;
        std::int64_t from; // as the file has it: a position, -1 for no node
        std::int64_t to;
    };
    /// A larger graph is not drawn.
    static constexpr std::size_t kMaxNodes = 5'000;
    static constexpr std::size_t kMaxEdges = 20'000;

    /// `text` is a document that `XmlInspector` read.
    explicit Graph(std::string_view text);

    std::vector<Node> const& Nodes() const noexcept { return m_nodes; }
    std::vector<Edge> const& Edges() const noexcept { return m_edges; }
    bool IsDrawable() const noexcept { return m_nodes.size() <= kMaxNodes && m_edges.size() <= kMaxEdges; }
    bool HasBothEnds(Edge const& edge) const noexcept { return IsNode(edge.from) && IsNode(edge.to); }

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
    bool IsNode(std::int64_t position) const noexcept {
        return position >= 0 && position < static_cast<std::int64_t>(m_nodes.size());
    }
    bool IsInNode() const noexcept { return m_nodeDepth > 0; }
    void TakeText(std::string_view text);
    void TakePoint(std::vector<XmlAttribute> const& attributes);

    std::vector<Node> m_nodes;
    std::vector<Edge> m_edges;
    std::vector<Element> m_open;
    std::size_t m_nodeDepth = 0; // the depth of the node that is open, 0 for none
    bool m_hasGraph = false;
    std::string m_key; // of the pair that is open
    bool m_hasNamedLabel = false;
};

} // namespace vfinspect
