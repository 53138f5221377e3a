#pragma once

#include <string>

namespace VFoundation {

/// The text as the inside of a JSON string. Bytes that are not UTF-8 become U+FFFD.
/// Internal.
std::string AsJSON(std::string const& text);
/// The text as character data of XML. Characters that XML does not have, and bytes that are not UTF-8, become U+FFFD.
std::string AsXML(std::string const& text);

} // namespace VFoundation
