#pragma once

#include <cstddef>
#include <cstdio>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace VFoundation {

/// Prints a document of elements and texts byte for byte as TinyXML does: indented into a stream (borrowed), block by
/// block, or without a stream as one line into memory. Stops when the text is longer than a document may be.
class XMLPrinter {
  public:
    explicit XMLPrinter(std::FILE* stream) : m_stream(stream) {}

    /// False when writing failed or the text is too long. Throws `std::bad_alloc`.
    bool Print(pugi::xml_node document);
    /// What was printed without a stream.
    std::string const& Text() const noexcept { return m_text; }

  private:
    void PrintElement(pugi::xml_node element, std::size_t depth);
    void PrintAttributes(pugi::xml_node element);
    void PrintText(pugi::xml_node text, std::size_t depth);
    void PrintEncoded(std::string_view text);
    void StartLine(std::size_t depth);
    bool Flush();

    std::FILE* m_stream;
    std::string m_text; // what is not in the stream yet
    std::size_t m_flushed = 0;
    bool m_failed = false;
};

} // namespace VFoundation
