#include "foundation/messaging/internal/CallGate.h"

#include <utility>

namespace VFoundation {

constinit thread_local CallGate::Call const* CallGate::s_innermost = nullptr;

CallGate::Call::Call(CallGate& gate) noexcept
    : m_gate(gate), m_outer(std::exchange(s_innermost, this)),
      m_isLetThrough((gate.m_running.fetch_add(1) & kClosed) == 0) {
}

CallGate::Call::~Call() {
    s_innermost = m_outer;
    if (m_gate.m_running.fetch_sub(1) == (kClosed | 1)) {
        m_gate.m_running.notify_all();
    }
}

void CallGate::Close() noexcept {
    m_running.fetch_or(kClosed);
}

void CallGate::CloseAndWait() noexcept {
    Close();
    for (Call const* call = s_innermost; call; call = call->m_outer) {
        if (&call->m_gate == this) {
            return;
        }
    }
    for (std::uint32_t state = m_running.load(); state != kClosed; state = m_running.load()) {
        m_running.wait(state);
    }
}

} // namespace VFoundation
