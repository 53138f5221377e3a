#include "foundation/messaging/VConnectionTuple.h"

#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/containers/internal/TRecyclePool.h"
#include "foundation/messaging/VCommandDelayer.h"
#include "foundation/messaging/VMessage.h"
#include "foundation/messaging/VMessenger.h"

#include <cstddef>
#include <memory>
#include <new>
#include <utility>

namespace VFoundation {

VClass* VConnectionTuple::ms_theClass = nullptr;
std::atomic<bool> VConnectionTuple::ms_bRecyclingEnabled{true};
std::atomic<VObjectRingBufferTmpl<VConnectionTuple>*> VConnectionTuple::ms_recycledConnections{nullptr};
VObjectArrayTmpl<VConnectionTuple>* VConnectionTuple::ms_allConnections = nullptr;

namespace {

using ConnectionPool = TRecyclePool<VConnectionTuple>;

/// The count of a listed tuple in use by its caller alone: the caller's reference and the list's.
constexpr std::int32_t kCallerAndList = 2;

/// Lends a message to one target.
class BorrowedID {
  public:
    BorrowedID(VMessage* message, int id) : m_message(message), m_own(message->MessageID()) {
        message->SetMessageID(id);
    }
    BorrowedID(BorrowedID const&) = delete;
    BorrowedID& operator=(BorrowedID const&) = delete;
    ~BorrowedID() { m_message->SetMessageID(m_own); }

    int Own() const noexcept { return m_own; }

  private:
    VMessage* m_message;
    int m_own;
};

} // namespace

/// The memory of the tuples that are made at the start, which takes one allocation instead of thousands. Whoever makes
/// them holds it, and each tuple does.
class VConnectionTuple::Block {
  public:
    static Block* Make() { return new Block; }
    /// The block of a tuple that has a place.
    static Block* Of(VConnectionTuple const& tuple) noexcept {
        auto* const place = reinterpret_cast<std::byte*>(const_cast<VConnectionTuple*>(&tuple));
        return reinterpret_cast<Block*>(place - tuple.m_place * sizeof(Place));
    }

    VConnectionTuple* NewTuple(std::uint16_t place, VClass* cls) {
        auto* const tuple = ::new (&m_places[place]) VConnectionTuple(cls);
        tuple->m_place = place;
        VAtomicOp::AddToCount(m_holders, 1L);
        return tuple;
    }
    void LetGo() noexcept {
        if (VAtomicOp::AddToCount(m_holders, -1L) == 0) {
            delete this;
        }
    }

  private:
    struct Place {
        alignas(VConnectionTuple) std::byte memory[sizeof(VConnectionTuple)];
    };
    static_assert(kPoolCapacity <= kNoPlace);

    Block() noexcept {} // leaves the places as they are

    Place m_places[kPoolCapacity]; // first: see `Of`
    std::atomic<long> m_holders{1};
};

VConnectionTuple::VConnectionTuple(VClass* cls) : Registered(cls) {
}

VConnectionTuple::~VConnectionTuple() = default;

VConnectionTuple* VConnectionTuple::New() {
    return new VConnectionTuple();
}

VConnectionTuple* VConnectionTuple::NewConnectionTuple() {
    if (ms_bRecyclingEnabled.load(std::memory_order_relaxed)) {
        if (auto* const tuple = ConnectionPool::Pop(ms_recycledConnections, &VConnectionTuple::m_bRecycled)) {
            return tuple;
        }
    }
    return New();
}

void VConnectionTuple::InitializeClass() {
    ConnectionPool::Create(ms_recycledConnections, kPoolCapacity);
    if (ms_allConnections) {
        return; // there already, or made with the class's record while the pool was made
    }
    auto all = VObjectRef<VObjectArrayTmpl<VConnectionTuple>>::Adopt(
        new VObjectArrayTmpl<VConnectionTuple>(kPoolCapacity));
    auto const letGo = [](Block* block) { block->LetGo(); };
    std::unique_ptr<Block, decltype(letGo)> const block(Block::Make(), letGo);
    VClass* const cls = TheClass();
    for (std::uint16_t place = 0; place < kPoolCapacity; ++place) {
        auto tuple = VObjectRef<VConnectionTuple>::Adopt(block->NewTuple(place, cls));
        tuple->m_bListed = true;
        if (!all->AddObject(tuple.Get())) {
            throw std::bad_alloc();
        }
        if (ms_bRecyclingEnabled.load(std::memory_order_relaxed) &&
            ConnectionPool::Push(ms_recycledConnections, tuple.Get(), &VConnectionTuple::m_bRecycled)) {
            static_cast<void>(tuple.Detach()); // the pool's now, without the questions of a release
        }
    }
    if (!ms_allConnections) {
        ms_allConnections = all.Detach();
    }
}

void VConnectionTuple::UninitializeClass() {
    ClearAllConnectionTuples();
}

void VConnectionTuple::ClearAllConnectionTuples() {
    ms_bRecyclingEnabled.store(false, std::memory_order_relaxed);
    ConnectionPool::Destroy(ms_recycledConnections);
    auto const all =
        VObjectRef<VObjectArrayTmpl<VConnectionTuple>>::Adopt(std::exchange(ms_allConnections, nullptr));
    VObject* const* const tuples = all ? all->GetObjects() : nullptr;
    for (long i = 0; all && i < all->Count(); ++i) {
        static_cast<VConnectionTuple*>(tuples[i])->m_bListed =
            false; // those in use must not come to the next pool
    }
}

void VConnectionTuple::Set(VMessenger* source, int sourceId, VMessenger* target, int targetId,
                           VCommandDelayer* delayer) {
    m_source.Exchange(source);
    m_sourceId = sourceId;
    m_target.Exchange(target);
    m_targetId = targetId;
    m_delayer = delayer;
}

void VConnectionTuple::Disconnect() {
    m_target.Exchange(nullptr);
    m_source.Exchange(nullptr);
    m_delayer = nullptr;
    m_sourceId = kNoID;
    m_targetId = kNoID;
}

int VConnectionTuple::MessageSend(VMessage* message) {
    if (!message) {
        return kNoID;
    }
    BorrowedID const borrowed(message, m_targetId);
    // The handler may remove this connection: no member is used after these calls.
    if (m_delayer) {
        (void)m_delayer->MessageDelay(m_target.Get(), message); // what is lost, the centre counts
    } else if (m_target) {
        m_target->ReceiveMessage(message);
    }
    return borrowed.Own();
}

bool VConnectionTuple::Matches(VMessenger const* target, int targetId) const noexcept {
    return m_target.Get() == target && m_targetId == targetId;
}

bool VConnectionTuple::Matches(VMessenger const* source, int sourceId, VMessenger const* target,
                               int targetId) const noexcept {
    return m_source.Get() == source && m_sourceId == sourceId && Matches(target, targetId);
}

/// Drops the caller's reference unless the list's is the only other one. Two holders that let go at once must
/// not both take the other for the last: the tuple would never come back, nor its messengers.
bool VConnectionTuple::DropSharedReference() const {
    auto& word = CountWord();
    std::int32_t count = word.load(std::memory_order_acquire); // acquire: as `RetainCount`
    while ((count & kRetainCountMask) > kCallerAndList) {
        if (word.compare_exchange_weak(count, count - 1)) {
            return true;
        }
    }
    return false;
}

void VConnectionTuple::Release() const {
    if (m_bListed && !m_bRecycled) {
        if (DropSharedReference()) {
            return;
        }
        // Also without recycling, as the list keeps the tuple and must not keep what it connects.
        const_cast<VConnectionTuple*>(this)->Disconnect();
        if (ms_bRecyclingEnabled.load(std::memory_order_relaxed) && RetainCount() == kCallerAndList &&
            ConnectionPool::Push(ms_recycledConnections, this, &VConnectionTuple::m_bRecycled)) {
            return; // the pool has the caller's reference now
        }
    }
    VObject::Release();
}

void VConnectionTuple::DeleteInstance() const {
    if (m_place == kNoPlace) {
        VObject::DeleteInstance();
        return;
    }
    Block* const block = Block::Of(*this);
    this->~VConnectionTuple();
    block->LetGo();
}

} // namespace VFoundation
