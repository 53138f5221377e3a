#pragma once

#include "foundation/persistence/IXMLFileIOFactory.h"

namespace VFoundation {

/// Makes back ends on TinyXML; the library installs it at start-up.
///
/// Ownership, threads: as `IXMLFileIOFactory`.
class VXMLFileIOTinyXmlFactory : public IXMLFileIOFactory {
  public:
    IXMLFileIO* New() override;
};

} // namespace VFoundation
