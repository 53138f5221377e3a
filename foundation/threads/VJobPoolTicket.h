#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

namespace VFoundation {

/// Deliberately empty: a name in the class table, without data and operations.
///
/// Ownership: by reference count.
/// Threads: nothing to share.
class VFOUNDATION_API VJobPoolTicket : public Registered<VJobPoolTicket, VObject> {
  public:
    static constexpr char const* kClassName = "VJobPoolTicket";
    static VClass* ms_theClass;
    /// It cannot be made by name.
    static constexpr bool kIsAbstract = true;

    explicit VJobPoolTicket(VClass* cls = nullptr) : Registered(cls) {}
    VJobPoolTicket(VJobPoolTicket const&) = delete;
    VJobPoolTicket& operator=(VJobPoolTicket const&) = delete;
};

} // namespace VFoundation
