#pragma once

#include "foundation/core/VException.h"

#include <new>

namespace VFoundation {

/// Does `work`, whose allocations may fail. False when one did; every other exception passes.
template <class Work>
bool DoWithinMemory(Work work) {
    try {
        work();
        return true;
    } catch (std::bad_alloc const&) {
        return false;
    } catch (VException const& exception) {
        if (exception.Id() != VException::eOutOfMemory) {
            throw;
        }
        return false;
    }
}

} // namespace VFoundation
