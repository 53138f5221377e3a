#pragma once

#include "foundation/persistence/IXMLFileIO.h"

#include <string>

namespace VFoundation {

/// The text of a regular file with LF for CR LF and CR. It is empty, and `failure` says why, when the file cannot be read
/// or is longer than a document may be. Throws `std::bad_alloc`.
std::string XMLFileText(char const* path, IXMLFileIO::Failure& failure);

} // namespace VFoundation
