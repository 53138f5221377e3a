#pragma once

#include "foundation/core/VObject.h"

namespace VFoundation {

/// The document through which classes write themselves to XML and read themselves back in
/// `VObject::SerializeAsXML`.
///
/// Threads: one thread at a time.
class VXMLFile : public VObject {
  public:
    virtual bool IsLoading() const = 0;
    virtual bool IsSaving() const = 0;
};

} // namespace VFoundation
