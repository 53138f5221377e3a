#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

namespace VFoundation {

/// Deliberately empty: a name in the class table, without data and operations. Make one `VJobServer` a thread.
///
/// Ownership: by reference count.
/// Threads: nothing to share.
class VFOUNDATION_API VJobServerPool : public Registered<VJobServerPool, VObject> {
  public:
    static constexpr char const* kClassName = "VJobServerPool";
    static VClass* ms_theClass;
    /// It cannot be made by name.
    static constexpr bool kIsAbstract = true;

    explicit VJobServerPool(VClass* cls = nullptr) : Registered(cls) {}
    VJobServerPool(VJobServerPool const&) = delete;
    VJobServerPool& operator=(VJobServerPool const&) = delete;
};

} // namespace VFoundation
