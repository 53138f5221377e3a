// For a library without pugixml.
#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/VXMLFileIOPugiXmlFactory.h"

namespace VFoundation {

bool VXMLFileIOPugiXmlFactory::IsAvailable() noexcept {
    return false;
}

IXMLFileIO* VXMLFileIOPugiXmlFactory::New() {
    return nullptr;
}

} // namespace VFoundation
