#pragma once

#include "foundation/core/Export.h"
#include "foundation/persistence/IXMLFileIOFactory.h"

namespace VFoundation {

/// Makes back ends on pugixml: the same objects, refusals and files as with TinyXML, loaded and saved in less than half
/// of the time, and no memory is lost when it runs out while a document loads.
///
///     VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOPugiXmlFactory); // after InitializeLibrary
///
/// A library that was built without pugixml (VFOUNDATION_WITH_PUGIXML off) has the class, but it makes no back ends.
///
/// Ownership, threads: as `IXMLFileIOFactory`.
class VFOUNDATION_API VXMLFileIOPugiXmlFactory : public IXMLFileIOFactory {
  public:
    /// Whether the library has this back end.
    static bool IsAvailable() noexcept;
    /// Null when it has not; documents then say "XML lib init failed".
    IXMLFileIO* New() override;
};

} // namespace VFoundation
