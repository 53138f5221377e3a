#pragma once

#include "foundation/threads/VThread.h"

namespace VFoundation {

/// Runs `action` where nothing may be thrown on: in a destructor, in a handler, and in the outermost frame of a
/// thread, which an exception would turn into the end of the process. What `action` throws is dropped; the
/// unwinding of a thread that ends itself passes.
/// Internal.
template <class Action>
void Quietly(Action action) {
    try {
        action();
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
    }
}

} // namespace VFoundation
