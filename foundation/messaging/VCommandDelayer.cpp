#include "foundation/messaging/VCommandDelayer.h"

namespace VFoundation {

VClass* VCommandDelayer::ms_theClass = nullptr;

VCommandDelayer::VCommandDelayer(VClass* cls) : Registered(cls) {
}

VCommandDelayer::~VCommandDelayer() = default;

VCommandDelayer* VCommandDelayer::New() {
    return new VCommandDelayer();
}

bool VCommandDelayer::MessageDelay(VMessenger*, VMessage*) {
    return false;
}

long VCommandDelayer::SendDelayedCommands() {
    m_lastServiceTime.store(m_clock.GetElapsedTime(), std::memory_order_relaxed);
    return 0;
}

VCriticalSection* VCommandDelayer::GetCriticalSection() {
    return nullptr;
}

void VCommandDelayer::SetCriticalSection(VCriticalSection*) {
}

void VCommandDelayer::StartCenter(char const*, long) {
}

void VCommandDelayer::StopCenter() {
}

long VCommandDelayer::CommandCountMin() {
    return 0;
}

bool VCommandDelayer::ConnectDelayed(VMessenger*, int, VMessageCenter*, VMessenger*, int) {
    return false;
}

bool VCommandDelayer::DisconnectDelayed(VMessenger*, int, VMessageCenter*, VMessenger*, int) {
    return false;
}

bool VCommandDelayer::ConnectImmediate(VMessenger*, int, VMessageCenter*, VMessenger*, int) {
    return false;
}

bool VCommandDelayer::DisconnectImmediate(VMessenger*, int, VMessageCenter*, VMessenger*, int) {
    return false;
}

bool VCommandDelayer::ReconnectImmediate(VMessenger*, int, VMessageCenter*, VMessenger*, int) {
    return false;
}

bool VCommandDelayer::IsServiceDue() const {
    return m_clock.GetElapsedTime() > LastServiceTime() + ServiceInterval();
}

} // namespace VFoundation
