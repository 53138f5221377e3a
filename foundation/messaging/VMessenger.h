#pragma once

#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

namespace VFoundation {

class VCommandDelayer;
class VConnectionTuple;
class VMessage;

/// An object that sends messages to others and receives theirs, without knowing them: a connection joins one
/// of its outgoing messages to an incoming message of another messenger. Derive from it, number the messages in
/// each direction from 0, and send by passing a message to every connection of its id:
///
///     void Knob::Turn(double angle) {
///         VMessage message;
///         message.SetMessageID(kTurned);
///         message.FirstArg().SetValueToDouble(angle);
///         SendToConnections(&message);
///     }
///
/// Connect through a `VMessageCenter`, which checks the ids. examples/Messenger.cpp is a complete program.
///
/// Ownership: each connection retains both of its messengers, so a messenger that is connected does not die:
/// disconnect it first.
/// Threads: the connections have no lock and are changed and used by one thread at a time: change them through
/// a centre's delayed commands, or while no thread sends.
class VFOUNDATION_API VMessenger : public Registered<VMessenger, VObject> {
  public:
    static constexpr char const* kClassName = "VMessenger";
    static VClass* ms_theClass;
    static constexpr bool kIsAbstract = true;

    /// The connections that leave one outgoing id, in the order they were made, and those of all ids.
    using VConnections = VObjectArrayTmpl<VConnectionTuple>;
    using VConnectionTable = VObjectArrayTmpl<VConnections>;

    VMessenger(VMessenger const&) = delete;
    VMessenger& operator=(VMessenger const&) = delete;
    ~VMessenger() override;
    static void InitializeClass() {}
    static void UninitializeClass() {}

    /// Called with an incoming id before a connection to it is made or removed; the result is not looked at.
    virtual bool TouchInMessage(int id) = 0;
    /// A message has come (borrowed, and not to be changed); its id is one of the incoming ones. It comes on
    /// the sender's thread, or on the one that services the centre.
    virtual void ReceiveMessage(VMessage* message) = 0;
    /// How many outgoing and incoming messages there are.
    virtual int GetOutMessageCount() = 0;
    virtual int GetInMessageCount() = 0;
    /// As `TouchInMessage`, with an outgoing id.
    virtual bool TouchOutMessage(int id) = 0;
    /// For diagnostics.
    virtual char const* GetMessengerName() = 0;

    /// Connects an outgoing id with a target's incoming id; `delayer` (borrowed as long as the connection
    /// exists) queues what is sent, and null delivers it at once. The ids are not checked, except that a
    /// negative source id makes no connection. The result is empty then, and when memory runs out.
    /// DELIBERATE: the same connection may be made twice, and then delivers twice.
    VObjectRef<VConnectionTuple> AddConnection(int sourceId, VMessenger* target, int targetId,
                                               VCommandDelayer* delayer);
    /// Removes the latest connection with these ids and this target, and returns it; empty when there is
    /// none.
    /// DELIBERATE: the delayer is not compared; an immediate connection is removed for a delayed one.
    VObjectRef<VConnectionTuple> RemoveConnection(int sourceId, VMessenger* target, int targetId,
                                                  VCommandDelayer* delayer);
    /// The outgoing ids up to the highest that ever had a connection. Not the number of connections.
    long GetConnectionsCount() const;

  protected:
    explicit VMessenger(VClass* cls = nullptr);

    /// Sends a message through all connections of its id, in the order they were made; the result is their
    /// number. Receivers may connect and disconnect meanwhile, themselves included: connections made
    /// meanwhile get the next message, connections removed meanwhile get none. The caller keeps the messenger
    /// alive.
    long SendToConnections(VMessage* message);
    /// The connections of an outgoing id (borrowed), or null when it never had any.
    VConnections* ConnectionsOf(int sourceId) const;

  private:
    VConnections* MakeConnectionsOf(int sourceId);

    VObjectRef<VConnectionTable> m_connections;
};

} // namespace VFoundation
