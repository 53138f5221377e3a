#include "tools/vfinspect/Graph.h"

#include "tools/vfinspect/Text.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace vfinspect {

namespace {

constexpr std::size_t kLabelLength = 40;

std::string_view ValueOf(std::vector<XmlAttribute> const& attributes, std::string_view name) {
    for (XmlAttribute const& attribute : attributes) {
        if (attribute.name == name) {
            return attribute.value;
        }
    }
    return {};
}

/// As the library reads it: up to the first other character; -1 without a number.
std::int64_t Position(std::string_view text) {
    return text.empty() ? -1 : std::strtol(DecodeReferences(text.substr(0, 64)).c_str(), nullptr, 10);
}

} // namespace

Graph::Graph(std::string_view text) {
    XmlScanner(text, *this).Scan();
}

Graph::Role Graph::RoleOf(std::string_view className, std::string_view name) const {
    Role const parent = m_open.empty() ? Role::kOther : m_open.back().role;
    if (className == "VGraph" && !m_hasGraph) {
        return Role::kGraph;
    }
    if (parent == Role::kGraph && className.starts_with("VObjectArray")) {
        return name == "nodes" ? Role::kNodes : name == "edges" ? Role::kEdges : Role::kOther;
    }
    if (parent == Role::kNodes || parent == Role::kEdges) {
        return parent == Role::kNodes ? Role::kNode : Role::kEdge;
    }
    return IsInNode() && className == "VDictionaryPair" ? Role::kPair : Role::kOther;
}

void Graph::OnStart(std::size_t offset, std::string_view name, std::vector<XmlAttribute> const& attributes) {
    std::string_view const given = ValueOf(attributes, "class");
    std::string_view const className = given.empty() ? name : given;
    Element const element{RoleOf(className, ValueOf(attributes, "name")), 0, className == "VString"};
    bool const isInPair = !m_open.empty() && m_open.back().role == Role::kPair;
    if (!m_open.empty()) {
        ++m_open.back().children;
    }
    m_open.push_back(element);
    switch (element.role) {
    case Role::kGraph:
        m_hasGraph = true;
        break;
    case Role::kNode:
        m_drawing.nodes.push_back({std::to_string(m_drawing.nodes.size()), {}});
        m_nodeDepth = m_open.size();
        m_hasNamedLabel = false;
        break;
    case Role::kEdge:
        m_edgeOffsets.push_back(offset);
        m_drawing.edges.push_back(
            {Position(ValueOf(attributes, "srcNode_ID")), Position(ValueOf(attributes, "dstNode_ID"))});
        break;
    case Role::kPair:
        m_key.clear();
        break;
    default:
        break;
    }
    if (isInPair && className == "VString" && !ValueOf(attributes, "string").empty()) {
        TakeText(ValueOf(attributes, "string"));
    } else if (isInPair && className == "VPoint") {
        TakePoint(attributes);
    }
}

void Graph::OnEnd(std::size_t) {
    m_nodeDepth = m_open.size() == m_nodeDepth ? 0 : m_nodeDepth;
    m_open.pop_back();
}

void Graph::OnText(std::size_t, std::string_view text, bool) {
    bool const isStringOfPair =
        m_open.size() >= 2 && m_open.back().isString && m_open[m_open.size() - 2].role == Role::kPair;
    if (isStringOfPair) {
        TakeText(text);
    }
}

/// A string of a pair: the first one is the key.
void Graph::TakeText(std::string_view text) {
    auto const pair = std::find_if(m_open.rbegin(), m_open.rend(),
                                   [](Element const& element) { return element.role == Role::kPair; });
    std::string const decoded = DecodeReferences(text.substr(0, 4 * kLabelLength));
    if (pair->children == 1) {
        m_key = decoded;
    } else if (!m_hasNamedLabel && !m_drawing.nodes.empty()) {
        Node& node = m_drawing.nodes.back();
        bool const isFirst = node.label == std::to_string(m_drawing.nodes.size() - 1);
        m_hasNamedLabel = m_key == "name";
        if (m_hasNamedLabel || isFirst) {
            node.label = Printable(decoded, kLabelLength);
        }
    }
}

void Graph::TakePoint(std::vector<XmlAttribute> const& attributes) {
    if (m_key == "screen_XY" && !m_drawing.nodes.empty()) {
        m_drawing.nodes.back().place =
            VFoundation::GraphDrawing::Place{static_cast<double>(Position(ValueOf(attributes, "x"))),
                                             static_cast<double>(Position(ValueOf(attributes, "y")))};
    }
}

void Graph::Check(Report& report) const {
    for (std::size_t i = 0; i < m_edgeOffsets.size(); ++i) {
        for (std::int64_t const end : {m_drawing.edges[i].from, m_drawing.edges[i].to}) {
            if (end != -1 && !m_drawing.IsNode(end)) {
                report.AddProblem(m_edgeOffsets[i], "the edge ends at node " + std::to_string(end) +
                                                        ", the graph has " +
                                                        Counted(m_drawing.nodes.size(), "node"));
            }
        }
    }
}

} // namespace vfinspect
