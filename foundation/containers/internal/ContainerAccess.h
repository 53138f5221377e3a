#pragma once

#include "foundation/containers/VObjectContainer.h"

namespace VFoundation::detail {

/// For classes that build the contents of their containers aside and put them into place when nothing can fail any
/// more.
struct ContainerAccess {
    /// Exchanges elements and capacity. No virtual operation is called, and no lock is taken.
    static void Swap(VObjectContainer& a, VObjectContainer& b) noexcept { a.SwapSlots(b); }
};

} // namespace VFoundation::detail
