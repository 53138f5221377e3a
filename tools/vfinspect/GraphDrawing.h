#pragma once

#include "tools/vfinspect/Graph.h"

#include <iosfwd>

namespace vfinspect {

/// Draws a graph that `IsDrawable()` as an SVG picture. Nodes stand at their property "screen_XY" when each has one at
/// a place of its own; otherwise in rows: those without an incoming edge first, the others one row below the first node
/// that leads to them. Edges without two nodes are left out.
void DrawSvg(Graph const& graph, std::ostream& out);

/// The graph in the DOT language, for the programs of Graphviz.
void WriteDot(Graph const& graph, std::ostream& out);

} // namespace vfinspect
