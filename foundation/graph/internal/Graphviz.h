#pragma once

#include <string>

namespace VFoundation {

/// Runs Graphviz's "dot" on a text in its language. `svg` is the picture; the result is empty, or why there is none. The
/// program is ended when it takes longer than so many seconds.
/// Internal.
std::string RunGraphviz(std::string const& dot, int seconds, std::string& svg);

} // namespace VFoundation
