#include "foundation/graph/VGraphPicture.h"

#include "foundation/containers/internal/VObjectCast.h"
#include "foundation/graph/VGraph.h"
#include "foundation/graph/internal/GraphDrawing.h"
#include "foundation/graph/internal/Graphviz.h"
#include "foundation/persistence/internal/FileReplacer.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/VPoint.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace VFoundation {

namespace {

constexpr char kNameKey[] = "name";
constexpr char kPlaceKey[] = "screen_XY";

/// Not in the middle of a character.
std::string Cut(std::string_view text) {
    if (text.size() <= VGraphPicture::kMaxLabel) {
        return std::string(text);
    }
    std::size_t length = VGraphPicture::kMaxLabel;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U) {
        --length;
    }
    return std::string(text.substr(0, length)) + "...";
}

GraphDrawing::Node NodeOf(VGraphNode const& node, std::size_t number) {
    VDictionary const& properties = node.Properties();
    GraphDrawing::Node drawn;
    auto const* name = VObjectCast<VString>(properties.ObjectForKey(kNameKey));
    for (long i = 0; !name && i < properties.Count(); ++i) {
        name = VObjectCast<VString>(properties.EntryAtIndex(i).value);
    }
    drawn.label = name ? Cut(name->View()) : std::to_string(number);
    if (auto const* const point = VObjectCast<VPoint>(properties.ObjectForKey(kPlaceKey))) {
        drawn.place = GraphDrawing::Place{static_cast<double>(point->x), static_cast<double>(point->y)};
    }
    return drawn;
}

GraphDrawing DrawingOf(VGraph const& graph) {
    GraphDrawing drawing;
    std::unordered_map<VGraphNode const*, std::int64_t> numbers;
    for (long i = 0; i < graph.Nodes().Count(); ++i) {
        if (auto const* const node = VObjectCast<VGraphNode>(graph.Nodes().ObjectAtIndex(i))) {
            numbers.emplace(node, static_cast<std::int64_t>(drawing.nodes.size()));
            drawing.nodes.push_back(NodeOf(*node, drawing.nodes.size()));
        }
    }
    auto const numberOf = [&numbers](VGraphNode const* node) {
        auto const found = numbers.find(node);
        return found != numbers.end() ? found->second : -1;
    };
    for (long i = 0; i < graph.Edges().Count(); ++i) {
        if (auto const* const edge = VObjectCast<VGraphEdge>(graph.Edges().ObjectAtIndex(i))) {
            drawing.edges.push_back({numberOf(edge->Node1()), numberOf(edge->Node2())});
        }
    }
    return drawing;
}

} // namespace

VGraphPicture::VGraphPicture(VGraph const& graph)
    : m_drawing(std::make_unique<GraphDrawing const>(DrawingOf(graph))) {
}

VGraphPicture::~VGraphPicture() = default;

std::string VGraphPicture::Dot() const {
    return DotOf(*m_drawing);
}

/// `print` writes to a stream; what it returns is why it could not.
template <class Print>
bool VGraphPicture::Write(char const* path, Print print) {
    m_error.clear();
    FileReplacer file(path ? path : "");
    std::string reason;
    if (file.Stream()) {
        reason = print(file.Stream());
    }
    if (reason.empty() && !(file.Stream() && file.Commit())) {
        reason = std::system_category().message(file.Error() ? file.Error() : EIO);
    }
    if (!reason.empty()) {
        m_error = std::string("cannot write ") + (path ? path : "a picture") + ": " + reason;
    }
    return reason.empty();
}

namespace {

/// Writes a whole text; empty, or the system's reason.
std::string Put(std::string const& text, std::FILE* stream) {
    bool const isWritten =
        std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0;
    return isWritten ? std::string() : std::system_category().message(errno);
}

} // namespace

bool VGraphPicture::WriteDot(char const* path) {
    return Write(path, [this](std::FILE* stream) { return Put(Dot(), stream); });
}

bool VGraphPicture::WriteSVG(char const* path) {
    return Write(path, [this](std::FILE* stream) {
        return m_drawing->IsDrawable() ? Put(SVGOf(*m_drawing), stream)
                                       : std::string("the graph is too large to draw");
    });
}

bool VGraphPicture::WriteSVGByGraphviz(char const* path, int seconds) {
    return Write(path, [&](std::FILE* stream) {
        std::string svg;
        std::string const reason = RunGraphviz(Dot(), seconds, svg);
        return reason.empty() ? Put(svg, stream) : reason;
    });
}

VString VGraphPicture::ErrorDescription() const {
    return m_error;
}

} // namespace VFoundation
