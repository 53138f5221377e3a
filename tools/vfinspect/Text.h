#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vfinspect {

/// `text` as it may be written to a terminal or into JSON: control characters, bytes that are not UTF-8 and characters
/// that turn the direction of writing are shown as "\x1B". What is longer than `most` bytes ends with "...".
std::string Printable(std::string_view text, std::size_t most = 120);
/// The same in double quotes, with `"` and `\` escaped.
std::string Quoted(std::string_view text, std::size_t most = 120);
/// Bytes in hexadecimal, in groups of two digits; more than 16 of them end with "...".
std::string Hexadecimal(std::string_view bytes);

/// "1 byte", "2 bytes".
std::string Counted(std::uint64_t count, std::string_view thing);

} // namespace vfinspect
