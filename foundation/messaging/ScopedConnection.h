#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VObjectRef.h"

namespace VFoundation {

namespace detail {
class Connected;
} // namespace detail

/// What connects a function or a messenger for as long as it lives: the result of `VNotificationCenter::Observe` and
/// `VMessageCenter::Connect`. It can be moved, and is empty when nothing was connected.
///
///     m_saved = VNotificationCenter::DefaultCenter()->Observe("DocumentSaved", nullptr, [this](auto&) { Redraw(); });
///
/// The destructor disconnects and waits for a call of the function that is running on another thread, so that the
/// function may use what dies after its connection. Do not hold a lock meanwhile that the function takes; two functions
/// that end each other's connection at the same time wait forever (`Disconnect` does not). In a call of the function
/// itself it does not wait, and neither does `DisconnectAndWait`.
///
/// Ownership: keeps the function, both messengers and the centre until it is disconnected; a call that was posted
/// before keeps the function until then.
/// Threads: one thread at a time. A connection of messengers is made and dropped as `VMessenger` says.
class VFOUNDATION_API ScopedConnection {
  public:
    ScopedConnection() noexcept;
    ScopedConnection(ScopedConnection&& other) noexcept;
    ScopedConnection& operator=(ScopedConnection&& other) noexcept;
    ~ScopedConnection();

    [[nodiscard]] bool IsConnected() const noexcept { return static_cast<bool>(m_connected); }
    explicit operator bool() const noexcept { return IsConnected(); }

    /// No further call begins; one that is running on another thread may go on.
    void Disconnect() noexcept;
    /// Also waits until no call is running.
    void DisconnectAndWait() noexcept;

  private:
    friend class VMessageCenter;
    friend class VNotificationCenter;

    explicit ScopedConnection(VObjectRef<detail::Connected> connected) noexcept;

    VObjectRef<detail::Connected> m_connected;
};

} // namespace VFoundation
