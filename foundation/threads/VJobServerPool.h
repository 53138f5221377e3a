#pragma once

#include "foundation/core/Registered.h"

namespace VFoundation {

/// A name that the class table knows for a pool of job servers. There is no pool: make a `VJobServer` for
/// each thread that you need.
///
/// Ownership: by reference count.
/// Threads: nothing to share.
class VJobServerPool : public Registered<VJobServerPool, VObject> {
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
