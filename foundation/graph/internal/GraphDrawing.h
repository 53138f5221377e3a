#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace VFoundation {

/// What a picture of a graph shows. Its sources need nothing of the library but UTF8Text, so that vfinspect, which links
/// nothing of it, draws by them too.
/// Internal.
struct GraphDrawing {
    struct Place {
        double x;
        double y;
    };
    struct Node {
        std::string label; // any bytes
        std::optional<Place> place;
    };
    /// Numbers of nodes. An edge without two nodes is left out.
    struct Edge {
        std::int64_t from;
        std::int64_t to;
    };
    /// A larger graph is not drawn.
    static constexpr std::size_t kMaxNodes = 5'000;
    static constexpr std::size_t kMaxEdges = 20'000;

    bool IsDrawable() const noexcept { return nodes.size() <= kMaxNodes && edges.size() <= kMaxEdges; }
    bool HasBothEnds(Edge const& edge) const noexcept { return IsNode(edge.from) && IsNode(edge.to); }
    bool IsNode(std::int64_t number) const noexcept {
        return number >= 0 && number < static_cast<std::int64_t>(nodes.size());
    }

    std::vector<Node> nodes;
    std::vector<Edge> edges;
};

/// An SVG picture of a drawing that `IsDrawable()`. Nodes stand at their places when each has one of its own; otherwise in
/// rows: those without an incoming edge first, the others one row below the first node that leads to them.
std::string SVGOf(GraphDrawing const& drawing);
/// The drawing in the DOT language, for the programs of Graphviz.
std::string DotOf(GraphDrawing const& drawing);

} // namespace VFoundation
