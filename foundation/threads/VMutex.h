#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

namespace VFoundation {

/// Deliberately empty: a name in the class table, without data and operations. To lock, use `VCriticalSection`.
///
/// Ownership: by reference count.
/// Threads: nothing to share.
class VFOUNDATION_API VMutex : public Registered<VMutex, VObject> {
  public:
    static constexpr char const* kClassName = "VMutex";
    static VClass* ms_theClass;

    explicit VMutex(VClass* cls = nullptr) : Registered(cls) {}
    VMutex(VMutex const&) = delete;
    VMutex& operator=(VMutex const&) = delete;
    ~VMutex() override = default;
    static VMutex* New();
};

} // namespace VFoundation
