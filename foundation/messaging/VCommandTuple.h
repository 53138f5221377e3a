#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/messaging/VMessage.h"

#include <cstdint>

namespace VFoundation {

class VGarbageCan;
class VMessageCenter;
class VMessenger;

/// One command in the queue of a message centre: deliver a message, connect or disconnect. Centres make
/// theirs in advance and use them again.
///
/// Ownership: retains the messengers and the centre that it names until it is cleared. With a garbage can
/// set, a messenger whose last reference the command holds is parked there, so that no messenger dies on the
/// thread that services commands.
/// Threads: a tuple is for one thread at a time; `SetGarbageCan` may be called by any thread.
class VFOUNDATION_API VCommandTuple : public Registered<VCommandTuple, VObject> {
  public:
    static constexpr char const* kClassName = "VCommandTuple";
    static VClass* ms_theClass;
    static constexpr int kNoID = -1;

    enum eKind : std::int32_t { eNone = 0, eMessage = 1, eConnect = 2, eDisconnect = 3 };

    explicit VCommandTuple(VClass* cls = nullptr);
    VCommandTuple(VCommandTuple const&) = delete;
    VCommandTuple& operator=(VCommandTuple const&) = delete;
    ~VCommandTuple() override;
    [[nodiscard]] static VCommandTuple* New();
    static void InitializeClass() {}
    /// Lets go of the garbage can.
    static void UninitializeClass();

    /// Copies the message.
    void SetAndRetainMessage(VMessenger* target, VMessage const* message);
    void SetAndRetainConnect(VMessenger* source, int sourceId, VMessageCenter* center, VMessenger* target,
                             int targetId);
    void SetAndRetainDisconnect(VMessenger* source, int sourceId, VMessageCenter* center, VMessenger* target,
                                int targetId);
    void ClearAndRelease();

    std::int32_t Kind() const noexcept { return m_kind; }
    /// "Message", "Connect", "Disconnect"; anything else is "Undefined".
    char const* Label() const noexcept;
    // Null, or -1, where the command has none. All borrowed.
    VMessenger* Source() const noexcept { return m_source.Get(); }
    int SourceID() const noexcept { return m_sourceId; }
    VMessageCenter* Center() const noexcept { return m_center.Get(); }
    VMessenger* Target() const noexcept { return m_target.Get(); }
    int TargetID() const noexcept { return m_targetId; }
    VMessage* Message() noexcept { return &m_message; }

    /// Where dying messengers are parked (retained); null, as at first, lets them die.
    static void SetGarbageCan(VGarbageCan* can);

  private:
    void SetConnection(eKind kind, VMessenger* source, int sourceId, VMessageCenter* center,
                       VMessenger* target, int targetId);
    void DropMessengers();

    static detail::Mutex ms_canLock;
    static VGarbageCan* ms_garbageCan VFOUNDATION_GUARDED_BY(ms_canLock);

    std::int32_t m_kind = eNone;
    VObjectRef<VMessenger> m_source;
    std::int32_t m_sourceId = kNoID;
    VObjectRef<VMessageCenter> m_center;
    VObjectRef<VMessenger> m_target;
    std::int32_t m_targetId = kNoID;
    VMessage m_message;
};

} // namespace VFoundation
