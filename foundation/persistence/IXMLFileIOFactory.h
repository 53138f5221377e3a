#pragma once

#include "foundation/core/Export.h"

namespace VFoundation {

class IXMLFileIO;

/// Makes the back end of each `VXMLFile`; installed with `VXMLFile::SetIXMLFileIOFactory`.
///
/// Ownership: adopted by `VXMLFile` when it is installed.
/// Threads: `New()` may be called by any thread.
class VFOUNDATION_API IXMLFileIOFactory {
  public:
    virtual ~IXMLFileIOFactory() = default;
    /// A new back end, owned by the caller (`delete`); null when there is none.
    virtual IXMLFileIO* New() = 0;
};

} // namespace VFoundation
