#pragma once

#include "foundation/threads/VThread.h"

namespace VFoundation {

/// Calls `action`, whose exceptions end here: for destructors, the outermost frames of threads and other places that
/// must go on. False when there was one. The end of the thread (`VThread::EndThread`) passes through.
/// Internal.
template <class Action>
bool WithoutThrowing(Action action) {
    try {
        action();
        return true;
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        return false;
    }
}

} // namespace VFoundation
