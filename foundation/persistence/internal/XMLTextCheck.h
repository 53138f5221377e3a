#pragma once

#include <string>
#include <string_view>

namespace VFoundation {

/// Whether TinyXML reads `name` as a name: a letter, '_' or a byte above 127, then also digits, '-', '.', ':'.
bool IsXMLName(char const* name) noexcept;

/// Whether `text` has nothing but white space for TinyXML.
bool IsXMLBlank(std::string_view text) noexcept;

/// Checks a document's text before TinyXML sees it, and takes away what TinyXML would make of it silently.
///
/// TinyXML recurses once a level, compares each attribute with all before it, drops an '&' that begins nothing
/// and stops without an error at text it did not expect. So only text passes that is well-formed in its tags,
/// attributes, references, comments, CDATA sections and instructions, keeps the limits of `IXMLFileIO`, has one
/// root element and no NUL. A document type with a subset of its own does not pass. What is left for TinyXML to
/// find is an attribute given twice.
///
/// TinyXML also drops text of blanks only. Where such text is written as references, which nobody does by
/// accident, it is turned into a CDATA section here, which TinyXML keeps.
///
/// `isUtf8` tells how characters beyond ASCII are meant: by a byte order mark, which is removed, or by the
/// declaration; true also without either when a reference needs it. It is false, and each byte stands for
/// itself, when the bytes are no UTF-8 after all: TinyXML would skip tags then. Text that is not UTF-8 and
/// refers to a character above 255 does not pass.
bool PrepareXMLText(std::string& text, bool& isUtf8);

} // namespace VFoundation
