#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"

#include "foundation/persistence/VXMLFileIOTinyXml.h"

namespace VFoundation {

IXMLFileIO* VXMLFileIOTinyXmlFactory::New() {
    return new VXMLFileIOTinyXml;
}

} // namespace VFoundation
