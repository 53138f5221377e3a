#pragma once

#include "tools/vfinspect/ByteSource.h"
#include "tools/vfinspect/Options.h"
#include "tools/vfinspect/Report.h"

#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vfinspect {

/// What a file's bytes say it is; where they say nothing, what its name says.
std::optional<Kind> Recognise(ByteSource& source, std::string const& name);

/// Reads a file of `kind` into `report`. The graph of a document goes to `out` when `action` says so, which is false
/// with the reason in `error` when there is none that can be drawn.
bool Inspect(ByteSource& source, Kind kind, Options const& options, Report& report, std::ostream& out,
             std::string& error);

/// The whole program; returns its exit status. `arguments` are those after the program's name.
int Run(std::vector<std::string> const& arguments, std::ostream& out, std::ostream& errors);

} // namespace vfinspect
