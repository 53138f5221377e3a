#pragma once

namespace VFoundation {

class CmdEvent;

/// Whom a command event is addressed to.
///
/// Ownership: events borrow their listener; it outlives them.
/// Threads: called on the thread that delivers the event.
class ICmdListener {
  public:
    virtual void CommandReceived(CmdEvent const& event) = 0;

  protected:
    ~ICmdListener() = default; // never deleted through this interface
};

} // namespace VFoundation
