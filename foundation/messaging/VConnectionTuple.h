#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <atomic>
#include <cstdint>

namespace VFoundation {

class VCommandDelayer;
class VMessage;
class VMessenger;
template <class T>
class VObjectArrayTmpl;
template <class T>
class VObjectRingBufferTmpl;

/// One connection: from an outgoing id of a source to an incoming id of a target, at once or through a
/// delayer. `VMessenger::AddConnection` makes them.
///
/// The library makes `kPoolCapacity` tuples at its start and recycles them. A list holds one reference to each,
/// so a tuple returns to the pool when one more holder lets go of it. Beyond that number tuples are made and
/// deleted one by one. Those of the start share a block of memory, which the last of them frees.
///
/// Ownership: retains both messengers; borrows the delayer.
/// Threads: a tuple is for one thread at a time; any thread may take one from the pool and release one.
class VFOUNDATION_API VConnectionTuple : public Registered<VConnectionTuple, VObject> {
  public:
    static constexpr char const* kClassName = "VConnectionTuple";
    static VClass* ms_theClass;
    static constexpr long kPoolCapacity = 8192;
    static constexpr int kNoID = -1;

    explicit VConnectionTuple(VClass* cls = nullptr);
    VConnectionTuple(VConnectionTuple const&) = delete;
    VConnectionTuple& operator=(VConnectionTuple const&) = delete;
    ~VConnectionTuple() override;
    /// A tuple (owned) that connects nothing: from the pool, or a new one.
    [[nodiscard]] static VConnectionTuple* NewConnectionTuple();
    [[nodiscard]] static VConnectionTuple* New();
    /// Makes list and pool, unless they exist.
    static void InitializeClass();
    /// Switches recycling off and ends list and pool; connections that exist stay whole.
    static void UninitializeClass();
    static void ClearAllConnectionTuples();

    void Set(VMessenger* source, int sourceId, VMessenger* target, int targetId, VCommandDelayer* delayer);

    /// Delivers the message to the target under the target's id, or has the delayer queue a copy. The message
    /// is lent, and has its own id again afterwards; the result is that id, or -1 for null. The connection
    /// may be removed meanwhile, but the caller keeps the target alive.
    /// DELIBERATE: whether the delayer took the message does not show; one that its queue had no room for is
    /// lost. A centre counts it (`VMessageCenter::DroppedCommands`).
    int MessageSend(VMessage* message);

    /// Null when it connects nothing (borrowed).
    VMessenger* Target() const noexcept { return m_target.Get(); }
    bool Matches(VMessenger const* target, int targetId) const noexcept;
    bool Matches(VMessenger const* source, int sourceId, VMessenger const* target,
                 int targetId) const noexcept;

    /// Puts a tuple into the pool when the caller and the list are its only holders.
    void Release() const override;
    void DeleteInstance() const override;

    /// Switches the pool; cleared when the library shuts down. Relaxed: the pool guards itself.
    static std::atomic<bool> ms_bRecyclingEnabled;
    static std::atomic<VObjectRingBufferTmpl<VConnectionTuple>*> ms_recycledConnections;
    static VObjectArrayTmpl<VConnectionTuple>* ms_allConnections;

  private:
    class Block;
    static constexpr std::uint16_t kNoPlace = 0xFFFF;

    bool DropSharedReference() const;
    void Disconnect();

    VObjectRef<VMessenger> m_source;
    std::int32_t m_sourceId = kNoID;
    VObjectRef<VMessenger> m_target;
    std::int32_t m_targetId = kNoID;
    VCommandDelayer* m_delayer = nullptr;
    bool m_bRecycled = false;         // true while in the pool
    bool m_bListed = false;           // in the list of all
    std::uint16_t m_place = kNoPlace; // in the block of the tuples that were made together
};

} // namespace VFoundation
