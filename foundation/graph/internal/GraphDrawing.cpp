#include "foundation/graph/internal/GraphDrawing.h"

#include "foundation/log/internal/UTF8Text.h"

#include <algorithm>
#include <cmath>
#include <locale>
#include <set>
#include <sstream>
#include <utility>

namespace VFoundation {

namespace {

using Place = GraphDrawing::Place;

constexpr double kRowHeight = 90;
constexpr double kBoxHeight = 30;
constexpr double kMargin = 40;
constexpr double kLargestDrawing = 4000;

double BoxWidth(GraphDrawing::Node const& node) {
    return 24 + 8 * static_cast<double>(node.label.size());
}

/// The places that were given, moved and scaled into the drawing; empty unless all nodes have one of their own.
std::vector<Place> GivenPlaces(GraphDrawing const& graph) {
    std::vector<Place> places;
    std::set<std::pair<double, double>> taken;
    for (GraphDrawing::Node const& node : graph.nodes) {
        if (!node.place || !taken.emplace(node.place->x, node.place->y).second) {
            return {};
        }
        places.push_back(*node.place);
    }
    if (places.empty()) {
        return places;
    }
    auto const byX = [](Place const& a, Place const& b) { return a.x < b.x; };
    auto const byY = [](Place const& a, Place const& b) { return a.y < b.y; };
    auto const [left, right] = std::minmax_element(places.begin(), places.end(), byX);
    auto const [top, bottom] = std::minmax_element(places.begin(), places.end(), byY);
    Place const first{left->x, top->y};
    double const extent = std::max({right->x - left->x, bottom->y - top->y, 1.0});
    double const scale = std::min(1.0, kLargestDrawing / extent);
    for (Place& place : places) {
        place = {(place.x - first.x) * scale + 2 * kMargin, (place.y - first.y) * scale + kMargin};
    }
    return places;
}

/// The row of each node: breadth first, from the nodes without an incoming edge and then from those not reached.
std::vector<int> Rows(GraphDrawing const& graph) {
    std::size_t const count = graph.nodes.size();
    std::vector<std::vector<std::size_t>> next(count);
    std::vector<bool> hasIncoming(count, false);
    for (GraphDrawing::Edge const& edge : graph.edges) {
        if (graph.HasBothEnds(edge)) {
            next[static_cast<std::size_t>(edge.from)].push_back(static_cast<std::size_t>(edge.to));
            hasIncoming[static_cast<std::size_t>(edge.to)] = true;
        }
    }
    std::vector<int> rows(count, -1);
    std::vector<std::size_t> reached;
    auto const spread = [&](std::size_t from) {
        for (; from < reached.size(); ++from) {
            for (std::size_t const to : next[reached[from]]) {
                if (rows[to] < 0) {
                    rows[to] = rows[reached[from]] + 1;
                    reached.push_back(to);
                }
            }
        }
    };
    for (std::size_t i = 0; i < count; ++i) {
        if (!hasIncoming[i]) {
            rows[i] = 0;
            reached.push_back(i);
        }
    }
    spread(0);
    for (std::size_t i = 0; i < count; ++i) {
        if (rows[i] < 0) { // in a ring that nothing leads to
            rows[i] = 0;
            reached.push_back(i);
            spread(reached.size() - 1);
        }
    }
    return rows;
}

std::vector<Place> RowPlaces(GraphDrawing const& graph) {
    std::vector<int> const rows = Rows(graph);
    std::vector<double> widths(rows.size() + 1, 0);
    std::vector<Place> places;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        auto const row = static_cast<std::size_t>(rows[i]);
        double const width = BoxWidth(graph.nodes[i]) + kMargin;
        places.push_back({widths[row] + width / 2, kMargin + kRowHeight * rows[i]});
        widths[row] += width;
    }
    double const widest = *std::max_element(widths.begin(), widths.end());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        places[i].x += kMargin / 2 + (widest - widths[static_cast<std::size_t>(rows[i])]) / 2;
    }
    return places;
}

/// The point where a line from `from` meets the box around `to`.
Place AtBox(Place from, Place to, double width) {
    double const dx = from.x - to.x;
    double const dy = from.y - to.y;
    double const scale = std::max(std::abs(dx) / (width / 2), std::abs(dy) / (kBoxHeight / 2));
    return scale <= 1 ? to : Place{to.x + dx / scale, to.y + dy / scale};
}

void DrawEdge(GraphDrawing const& graph, GraphDrawing::Edge const& edge, std::vector<Place> const& places,
              std::ostream& out) {
    Place const from = places[static_cast<std::size_t>(edge.from)];
    Place const to = places[static_cast<std::size_t>(edge.to)];
    out << "  <path marker-end=\"url(#head)\" d=\"M ";
    if (edge.from == edge.to) {
        double const right = from.x + BoxWidth(graph.nodes[static_cast<std::size_t>(edge.to)]) / 2;
        out << right << ' ' << from.y - 6 << " c 30 -24 30 36 0 12";
    } else {
        Place const end = AtBox(from, to, BoxWidth(graph.nodes[static_cast<std::size_t>(edge.to)]));
        out << from.x << ' ' << from.y << " L " << end.x << ' ' << end.y;
    }
    out << "\"/>\n";
}

/// Inside double quotes. Graphviz reads references in labels as XML does.
std::string AsDot(std::string const& label) {
    std::string text;
    for (char const character : AsXML(label)) {
        text += character == '"' || character == '\\' ? "\\" : "";
        text += character;
    }
    return text;
}

} // namespace

std::string SVGOf(GraphDrawing const& graph) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    std::vector<Place> places = GivenPlaces(graph);
    if (places.empty()) {
        places = RowPlaces(graph);
    }
    double width = 2 * kMargin;
    double height = 2 * kMargin;
    for (std::size_t i = 0; i < places.size(); ++i) {
        width = std::max(width, places[i].x + BoxWidth(graph.nodes[i]) / 2 + kMargin);
        height = std::max(height, places[i].y + kBoxHeight / 2 + kMargin);
    }
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << std::ceil(width) << "\" height=\""
        << std::ceil(height) << "\" font-family=\"sans-serif\" font-size=\"13\">\n"
        << "  <defs><marker id=\"head\" viewBox=\"0 0 10 10\" refX=\"9\" refY=\"5\" markerWidth=\"8\" "
           "markerHeight=\"8\" orient=\"auto\"><path d=\"M 0 0 L 10 5 L 0 10 z\" "
           "fill=\"#555\"/></marker></defs>\n"
        << "  <rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n"
        << "  <g fill=\"none\" stroke=\"#555\">\n";
    for (GraphDrawing::Edge const& edge : graph.edges) {
        if (graph.HasBothEnds(edge)) {
            DrawEdge(graph, edge, places, out);
        }
    }
    out << "  </g>\n";
    for (std::size_t i = 0; i < places.size(); ++i) {
        GraphDrawing::Node const& node = graph.nodes[i];
        double const box = BoxWidth(node);
        out << "  <rect x=\"" << places[i].x - box / 2 << "\" y=\"" << places[i].y - kBoxHeight / 2
            << "\" width=\"" << box << "\" height=\"" << kBoxHeight
            << "\" rx=\"6\" fill=\"#eef3fb\" stroke=\"#345\"/><text x=\"" << places[i].x << "\" y=\""
            << places[i].y + 4 << "\" text-anchor=\"middle\">" << AsXML(node.label) << "</text>\n";
    }
    out << "</svg>\n";
    return std::move(out).str();
}

std::string DotOf(GraphDrawing const& graph) {
    std::string text = "digraph {\n    node [shape=box, style=rounded];\n";
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
        text += "    " + std::to_string(i) + " [label=\"" + AsDot(graph.nodes[i].label) + "\"];\n";
    }
    for (GraphDrawing::Edge const& edge : graph.edges) {
        if (graph.HasBothEnds(edge)) {
            text += "    " + std::to_string(edge.from) + " -> " + std::to_string(edge.to) + ";\n";
        }
    }
    return text + "}\n";
}

} // namespace VFoundation
