#include "foundation/persistence/VXMLFileIOPugiXmlFactory.h"

#include "foundation/persistence/internal/VXMLFileIOPugiXml.h"

namespace VFoundation {

bool VXMLFileIOPugiXmlFactory::IsAvailable() noexcept {
    return true;
}

IXMLFileIO* VXMLFileIOPugiXmlFactory::New() {
    return new VXMLFileIOPugiXml;
}

} // namespace VFoundation
