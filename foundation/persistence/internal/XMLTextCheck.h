#pragma once

#include "foundation/persistence/IXMLFileIO.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace VFoundation {

/// Whether all of `name` is a name: a letter, '_' or a byte above 127 first, then also digits, '-', '.' and ':'.
bool IsXMLName(char const* name) noexcept;

/// Whether a text is to be saved as a CDATA section to read back unchanged: text of blanks only, which TinyXML would
/// drop, and text beside other nodes, around which it prints line feeds, unless a section cannot hold it.
bool NeedsXMLCData(std::string_view text, bool isAlone) noexcept;

/// What `PrepareXMLText` learns about a document.
struct XMLTextFacts {
    /// How to read character references: as UTF-8, or else as bytes. It is true with a byte order mark, when the
    /// declaration says so, and when a reference above 255 needs it; false when the text is not valid UTF-8.
    bool isUtf8 = false;
    /// The instructions but for those whose name begins with "xml", in their order: "?target rest?".
    std::vector<std::string> instructions;
    /// Where a text that does not pass is wrong.
    std::size_t errorOffset = 0;
    /// Of the start tags, in their order.
    std::vector<IXMLFileIO::Place> places;
};

/// Checks the text of a document before a back end parses it, and changes what the back ends read differently. Only
/// well-formed text passes: this checks the tags, attributes, references, comments, CDATA sections, instructions and
/// the document type, the limits of `IXMLFileIO`, that there is one root element and no NUL.
///
/// TinyXML recurses once per level, compares each attribute with all others of its element, drops an '&' that begins no
/// reference and stops without an error at text it did not expect. pugixml takes several roots, any reference and a '<'
/// in attributes, and has no limits. An internal subset does not pass, nor what TinyXML reads differently: a '>' inside
/// an instruction or a document type, and instructions "xml-..." without attributes. Text that is not UTF-8 and refers
/// to a character above 255 does not pass, nor does a UTF-8 name that begins with a byte order mark.
///
/// TinyXML drops a text of blanks only. When such a text is written as references, or in UTF-8 contains a byte order
/// mark, it is meant as text: it becomes a CDATA section here. Otherwise one with blanks that pugixml would keep is
/// removed. In text that is not UTF-8, references above 127 become bytes. A byte order mark is removed.
bool PrepareXMLText(std::string& text, XMLTextFacts& facts);

} // namespace VFoundation
