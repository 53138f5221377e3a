#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

namespace VFoundation {

/// An empty class, registered and creatable, for trials during development.
///
/// Ownership, threads: as `VObject`.
class VFOUNDATION_API VDev : public Registered<VDev, VObject> {
  public:
    static constexpr char const* kClassName = "VDev";
    static VClass* ms_theClass;

    explicit VDev(VClass* cls = nullptr) : Registered(cls) {}
    static VDev* New() { return new VDev; }
    static void InitializeClass() {}
    static void UninitializeClass() {}
};

} // namespace VFoundation
