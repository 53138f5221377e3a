#pragma once

#include <string_view>

namespace VFoundation {

/// The parts of a URL, as they stand in its text.
struct UrlParts {
    std::string_view scheme;
    std::string_view host;
    std::string_view path;
    std::string_view query;
    long port = -1; // -1 for none
};

/// Splits an absolute URI by the generic syntax of RFC 3986. False, with all parts empty, for other text: no scheme, a
/// character or escape that is not allowed where it stands, a malformed host, a port above 65535.
bool SplitUrl(std::string_view text, UrlParts& parts);

} // namespace VFoundation
