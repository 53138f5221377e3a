#pragma once

#include "foundation/core/Export.h"

namespace VFoundation {

class CmdEvent;

/// Receives the commands that are addressed to it.
///
/// Ownership: command events borrow their listener; it outlives them.
/// Threads: called on the thread that handles the event.
class VFOUNDATION_API ICmdListener {
  public:
    virtual void CommandReceived(CmdEvent const& event) = 0;

  protected:
    ~ICmdListener() = default; // never deleted through this interface
};

} // namespace VFoundation
