#pragma once

namespace VFoundation {

class IXMLFileIO;

/// Makes the XML back ends of the process; installed with `VXMLFile::SetIXMLFileIOFactory`.
///
/// Ownership: adopted by `VXMLFile` when it is installed.
/// Threads: `New()` may be called by any thread.
class IXMLFileIOFactory {
  public:
    virtual ~IXMLFileIOFactory() = default;
    /// A new back end, owned by the caller (delete it).
    virtual IXMLFileIO* New() = 0;
};

} // namespace VFoundation
