#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"

#include <cstring>

namespace VFoundation {

namespace {

constexpr char const* kTextAttribute = "string";
constexpr unsigned long kLongestAttribute = 10;

} // namespace

bool VString::SerializeAsXML(VXMLFile& file) {
    VObject::SerializeAsXML(file);
    char const* text = nullptr;
    if (file.IsSaving()) {
        if (m_length <= kLongestAttribute) {
            return file.WriteAttribute(kTextAttribute, CString());
        }
        return file.OpenFirstChildText() && file.WriteText(CString()) && file.CloseChild();
    }
    if (file.ReadAttribute(kTextAttribute, text)) {
        *this = text;
        return *this == text; // not when memory ran out
    }
    *this = "";
    bool isWhole = true;
    if (file.OpenFirstChildText()) { // comments and CDATA sections may divide it
        do {
            isWhole = isWhole && file.ReadText(text) && AppendBytes(text, std::strlen(text));
        } while (file.OpenNextSiblingText());
        file.CloseChild();
    }
    return isWhole;
}

} // namespace VFoundation
