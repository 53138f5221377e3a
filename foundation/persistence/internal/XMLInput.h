#pragma once

#include <string>

namespace VFoundation {

/// The text of a regular file with LF for CR LF and CR; empty when it cannot be read or is longer than a document may
/// be. Throws `std::bad_alloc`.
std::string XMLFileText(char const* path);

} // namespace VFoundation
