#pragma once

#include "foundation/core/Export.h"
#include "foundation/persistence/IXMLFileIOFactory.h"

namespace VFoundation {

/// Makes back ends on TinyXML; the library installs it at start-up.
///
/// Ownership, threads: as `IXMLFileIOFactory`.
class VFOUNDATION_API VXMLFileIOTinyXmlFactory : public IXMLFileIOFactory {
  public:
    IXMLFileIO* New() override;
};

} // namespace VFoundation
