#pragma once

#include "foundation/core/Registered.h"

namespace VFoundation {

/// A name that the class table knows for a place in a pool of job servers. There is no pool and the ticket
/// stands for nothing.
///
/// Ownership: by reference count.
/// Threads: nothing to share.
class VJobPoolTicket : public Registered<VJobPoolTicket, VObject> {
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
