#pragma once

#include "foundation/core/Export.h"

#include <cstddef>
#include <memory>
#include <string>

namespace VFoundation {

class VGraph;
class VString;
struct GraphDrawing;

/// A picture of a graph, as it was when the picture was made:
///
///     VGraphPicture picture(*graph);
///     if (!picture.WriteSVG("roads.svg")) { ... picture.ErrorDescription() ... }
///
/// A node is shown as a box with its property "name", else its first property that is a string, else its place in the
/// graph. Labels are cut after `kMaxLabel` bytes; bytes that are not UTF-8 become U+FFFD, and no label can end its quotes.
/// Edges without two nodes of the graph are left out.
///
/// Files are replaced when the new one is whole.
///
/// Ownership: holds no reference to the graph.
/// Threads: one thread at a time.
/// Memory: without it `std::bad_alloc`.
class VFOUNDATION_API VGraphPicture {
  public:
    static constexpr std::size_t kMaxLabel = 40;
    /// Seconds that Graphviz may take.
    static constexpr int kUsualPatience = 60;

    explicit VGraphPicture(VGraph const& graph);
    VGraphPicture(VGraphPicture const&) = delete;
    VGraphPicture& operator=(VGraphPicture const&) = delete;
    ~VGraphPicture();

    /// The picture in the DOT language of Graphviz, UTF-8.
    [[nodiscard]] std::string Dot() const;
    [[nodiscard]] bool WriteDot(char const* path);

    /// Draws the picture without another program: nodes at their property "screen_XY", a `VPoint`, when each has a place of
    /// its own, else in rows from those without an incoming edge on. False, too, for a graph of more than 5 000 nodes or
    /// 20 000 edges.
    [[nodiscard]] bool WriteSVG(char const* path);
    /// Has Graphviz lay out and draw the picture. Its program "dot" is looked for in the PATH when it is needed and run
    /// without a shell. False when it is not installed, reports an error or takes longer than `seconds`; it is then ended.
    [[nodiscard]] bool WriteSVGByGraphviz(char const* path, int seconds = kUsualPatience);

    /// Why the last picture could not be written, as in "cannot write roads.svg: Graphviz is not installed (no program
    /// 'dot' in the PATH)"; empty when it was.
    VString ErrorDescription() const;

  private:
    template <class Print>
    bool Write(char const* path, Print print);

    std::unique_ptr<GraphDrawing const> m_drawing;
    std::string m_error;
};

} // namespace VFoundation
