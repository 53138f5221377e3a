#include "foundation/messaging/VMessenger.h"

#include "foundation/core/VException.h"
#include "foundation/messaging/VConnectionTuple.h"
#include "foundation/messaging/VMessage.h"

#include <new>

namespace VFoundation {

VClass* VMessenger::ms_theClass = nullptr;

VMessenger::VMessenger(VClass* cls) : Registered(cls) {
}

VMessenger::~VMessenger() = default;

VMessenger::VConnections* VMessenger::ConnectionsOf(int sourceId) const {
    return m_connections ? m_connections->ObjectAtIndexTyped(sourceId) : nullptr;
}

/// Null, or an exception, when memory runs out.
VMessenger::VConnections* VMessenger::MakeConnectionsOf(int sourceId) {
    if (!m_connections) {
        m_connections.Allocate();
    }
    while (m_connections->Count() <= sourceId) {
        if (!m_connections->AddObject(nullptr)) {
            return nullptr;
        }
    }
    if (!m_connections->ObjectAtIndex(sourceId)) {
        auto const connections = VObjectRef<VConnections>::Adopt(VConnections::New());
        m_connections->ReplaceObjectAtIndex(connections.Get(), sourceId);
    }
    return m_connections->ObjectAtIndexTyped(sourceId);
}

long VMessenger::SendToConnections(VMessage* message) {
    VConnections* const connections = message ? ConnectionsOf(message->MessageID()) : nullptr;
    long const count = connections ? connections->Count() : 0;
    if (count == 1) { // spares the usual case the copy; the target may disconnect itself
        auto* const tuple = static_cast<VConnectionTuple*>(connections->GetObjects()[0]);
        VObjectRef<VMessenger> const target(tuple->Target());
        tuple->MessageSend(message);
        return 1;
    }
    long sent = 0;
    if (count > 1) {
        auto const all = VObjectRef<VObjectArray>::Adopt(connections->Copy());
        VObject* const* const tuples = all->GetObjects(); // no one else has this array
        for (long index = 0; index < count; ++index) {
            auto* const tuple = static_cast<VConnectionTuple*>(tuples[index]);
            // As long as nothing was disconnected, it is still in its place.
            if (connections->ObjectAtIndex(index) == tuple || connections->ContainsObject(tuple)) {
                VObjectRef<VMessenger> const target(tuple->Target());
                tuple->MessageSend(message);
                ++sent;
            }
        }
    }
    return sent;
}

VObjectRef<VConnectionTuple> VMessenger::AddConnection(int sourceId, VMessenger* target, int targetId,
                                                       VCommandDelayer* delayer) {
    if (sourceId < 0) {
        return {};
    }
    try {
        VConnections* const connections = MakeConnectionsOf(sourceId);
        auto tuple = VObjectRef<VConnectionTuple>::Adopt(VConnectionTuple::NewConnectionTuple());
        tuple->Set(this, sourceId, target, targetId, delayer);
        if (connections && connections->AddObject(tuple.Get())) {
            return tuple;
        }
    } catch (std::bad_alloc const&) { // no memory, as below
    } catch (VException const&) {
    }
    return {};
}

VObjectRef<VConnectionTuple> VMessenger::RemoveConnection(int sourceId, VMessenger* target, int targetId,
                                                          VCommandDelayer* /*delayer*/) {
    VConnections* const connections = ConnectionsOf(sourceId);
    for (long index = connections ? connections->Count() - 1 : -1; index >= 0; --index) {
        VObjectRef<VConnectionTuple> tuple(connections->ObjectAtIndexTyped(index));
        if (tuple->Matches(this, sourceId, target, targetId)) {
            connections->RemoveObjectAtIndex(index);
            return tuple;
        }
    }
    return {};
}

long VMessenger::GetConnectionsCount() const {
    return m_connections ? m_connections->Count() : 0;
}

} // namespace VFoundation
