#include "foundation/messaging/VMessenger.h"

#include "foundation/messaging/VConnectionTuple.h"

namespace VFoundation {

VClass* VMessenger::ms_theClass = nullptr;

VMessenger::VMessenger(VClass* cls) : Registered(cls) {
}

VMessenger::~VMessenger() = default;

VMessenger::VConnections* VMessenger::ConnectionsOf(int sourceId) const {
    return m_connections ? m_connections->ObjectAtIndexTyped(sourceId) : nullptr;
}

VMessenger::VConnections* VMessenger::MakeConnectionsOf(int sourceId) {
    if (!m_connections) {
        m_connections.Allocate();
    }
    while (m_connections->Count() <= sourceId) {
        m_connections->AddObject(nullptr);
    }
    if (!m_connections->ObjectAtIndex(sourceId)) {
        auto const connections = VObjectRef<VConnections>::Adopt(VConnections::New());
        m_connections->ReplaceObjectAtIndex(connections.Get(), sourceId);
    }
    return m_connections->ObjectAtIndexTyped(sourceId);
}

VObjectRef<VConnectionTuple> VMessenger::AddConnection(int sourceId, VMessenger* target, int targetId,
                                                       VCommandDelayer* delayer) {
    if (sourceId < 0) {
        return {};
    }
    VConnections* const connections = MakeConnectionsOf(sourceId);
    auto tuple = VObjectRef<VConnectionTuple>::Adopt(VConnectionTuple::NewConnectionTuple());
    tuple->Set(this, sourceId, target, targetId, delayer);
    connections->AddObject(tuple.Get());
    return tuple;
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
