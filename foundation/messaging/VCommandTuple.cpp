#include "foundation/messaging/VCommandTuple.h"

#include "foundation/core/Mutex.h"
#include "foundation/core/VGarbageCan.h"
#include "foundation/messaging/VMessageCenter.h"
#include "foundation/messaging/VMessenger.h"

#include <utility>

namespace VFoundation {

VClass* VCommandTuple::ms_theClass = nullptr;
constinit detail::Mutex VCommandTuple::ms_canLock;
VGarbageCan* VCommandTuple::ms_garbageCan = nullptr;

namespace {

/// Whether there is a can, so that commands need no lock where there is none. Relaxed: the can is read under the lock.
constinit std::atomic<bool> s_hasCan{false};

void DropInto(VGarbageCan& can, VObjectRef<VMessenger>& messenger) {
    if (messenger && messenger->RetainCount() == 1) {
        can.AddGarbageToCan(messenger.Get());
    }
    messenger.Exchange(nullptr);
}

} // namespace

VCommandTuple::VCommandTuple(VClass* cls) : Registered(cls) {
}

VCommandTuple::~VCommandTuple() = default;

VCommandTuple* VCommandTuple::New() {
    return new VCommandTuple();
}

void VCommandTuple::UninitializeClass() {
    SetGarbageCan(nullptr);
}

void VCommandTuple::SetGarbageCan(VGarbageCan* can) {
    VObjectRef<VGarbageCan> replaced(can); // released after the lock, with what it holds
    detail::MutexLock const lock(ms_canLock);
    replaced = VObjectRef<VGarbageCan>::Adopt(std::exchange(ms_garbageCan, replaced.Detach()));
    s_hasCan.store(can != nullptr, std::memory_order_relaxed);
}

char const* VCommandTuple::Label() const noexcept {
    switch (m_kind) {
    case eMessage:
        return "Message";
    case eConnect:
        return "Connect";
    case eDisconnect:
        return "Disconnect";
    default:
        return "Undefined";
    }
}

void VCommandTuple::SetAndRetainMessage(VMessenger* target, VMessage const* message) {
    ClearAndRelease();
    m_kind = eMessage;
    m_target.Exchange(target);
    if (message) {
        m_message = *message;
    }
}

void VCommandTuple::SetAndRetainConnect(VMessenger* source, int sourceId, VMessageCenter* center,
                                        VMessenger* target, int targetId) {
    SetConnection(eConnect, source, sourceId, center, target, targetId);
}

void VCommandTuple::SetAndRetainDisconnect(VMessenger* source, int sourceId, VMessageCenter* center,
                                           VMessenger* target, int targetId) {
    SetConnection(eDisconnect, source, sourceId, center, target, targetId);
}

void VCommandTuple::SetConnection(eKind kind, VMessenger* source, int sourceId, VMessageCenter* center,
                                  VMessenger* target, int targetId) {
    ClearAndRelease();
    m_kind = kind;
    m_source.Exchange(source);
    m_sourceId = sourceId;
    m_center.Exchange(center);
    m_target.Exchange(target);
    m_targetId = targetId;
}

void VCommandTuple::ClearAndRelease() {
    DropMessengers();
    m_center.Exchange(nullptr);
    m_sourceId = kNoID;
    m_targetId = kNoID;
    m_kind = eNone;
    m_message.Clear();
}

void VCommandTuple::DropMessengers() {
    VObjectRef<VGarbageCan> can;
    if (s_hasCan.load(std::memory_order_relaxed)) {
        detail::MutexLock const lock(ms_canLock);
        can.Exchange(ms_garbageCan);
    }
    if (can) {
        VGarbageCan::Context const open(can.Get());
        DropInto(*can, m_source);
        DropInto(*can, m_target);
    } else {
        m_target.Exchange(nullptr);
        m_source.Exchange(nullptr);
    }
}

} // namespace VFoundation
