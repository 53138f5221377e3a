#pragma once

#include <string>
#include <string_view>

namespace VFoundation {

/// Whether TinyXML reads all of `name` as a name: a letter, '_' or a byte above 127 first, then also digits, '-', '.'
/// and ':'.
bool IsXMLName(char const* name) noexcept;

/// Whether all of `text` is white space to TinyXML, which drops such text.
bool IsXMLBlank(std::string_view text) noexcept;

/// Checks the text of a document before TinyXML parses it; only well-formed text passes.
///
/// TinyXML recurses once per level, compares each attribute with all others of its element, drops an '&' that begins no
/// reference and stops without an error at text it did not expect. So this checks the tags, references, comments,
/// CDATA sections, instructions and the document type, the limits of `IXMLFileIO`, that there is one root element and
/// no NUL; TinyXML finds an attribute that stands twice. An internal subset does not pass, nor what TinyXML reads
/// differently: a '>' inside an instruction or a document type, and instructions "xml-..." without attributes.
///
/// TinyXML drops a text of blanks only. When such a text is written as references, or in UTF-8 contains a byte order
/// mark, it is meant as text: it becomes a CDATA section here, which TinyXML keeps.
///
/// `isUtf8` is how to read character references above 127. It is true with a byte order mark (which is removed), when
/// the declaration says so, and when a reference above 255 needs it; false, so that each byte stands for itself, when
/// the text is not valid UTF-8, of which TinyXML would skip parts. Text that is not UTF-8 and refers to a character
/// above 255 does not pass, nor does a UTF-8 name that begins with a byte order mark.
bool PrepareXMLText(std::string& text, bool& isUtf8);

} // namespace VFoundation
