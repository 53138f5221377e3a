#pragma once

#include "tools/vfinspect/ByteSource.h"
#include "tools/vfinspect/Report.h"

#include <iosfwd>
#include <string>

namespace vfinspect {

/// Writes the parts of `report` to files in `folder`, which is made when it is not there, and prints their paths.
///
/// A file is called by its place and the last component of its name: "2-notes.txt". So no name in a file reaches out
/// of the folder or names a file twice. A file that exists is not overwritten. False, with the reason in `error`, at the
/// first part that cannot be written; what was written before stays.
bool Extract(ByteSource& source, Report const& report, std::string const& folder, std::ostream& out,
             std::string& error);

} // namespace vfinspect
