#include "foundation/core/internal/ClassEnd.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/internal/TRecyclePool.h"
#include "foundation/core/internal/ClassRegistry.h"
#include "foundation/core/internal/ClassStart.h"

#include <algorithm>
#include <utility>

namespace VFoundation {

namespace {

int DepthOf(VClass const* record) noexcept {
    int depth = 0;
    for (; record; record = record->SuperClass()) {
        ++depth;
    }
    return depth;
}

} // namespace

UnregisterResult detail::UnregisterSlots(std::initializer_list<VClass**> slots) {
    return ClassEnd(slots).Run();
}

ClassEnd::ClassEnd(std::initializer_list<VClass**> slots) : m_slots(slots) {
    m_claimed.reserve(slots.size());
}

ClassEnd::~ClassEnd() {
    GiveBack();
}

UnregisterResult ClassEnd::Run() {
    UnregisterResult result = Claim();
    if (result && !HasHooks()) {
        result = CheckInstances(); // there is nothing that could end any
    }
    if (result) {
        RunHooks();
        result = TakeOut();
        if (!result) {
            StartAgain();
        }
    }
    return result;
}

/// Marks the records, so that no other thread starts or unregisters their classes.
UnregisterResult ClassEnd::Claim() {
    ClassRegistry::CreationScope const creation;
    for (VClass** const slot : m_slots) {
        VClass* const record = LoadClassSlot(*slot);
        if (!record || ClassRegistry::IsClaimed(*record, this)) { // gone, or named twice
            continue;
        }
        VClass::State state = record->m_state.load();
        bool const isAtRest = state == VClass::State::eReady || state == VClass::State::eUnstarted ||
                              state == VClass::State::eDetached;
        if (!isAtRest || !record->m_state.compare_exchange_strong(state, VClass::State::eEnding)) {
            return {record, UnregisterResult::eReason::eInUse};
        }
        record->m_starter.store(this, std::memory_order_relaxed);
        m_claimed.push_back({record, state, false});
    }
    std::sort(m_claimed.begin(), m_claimed.end(),
              [](Claimed const& a, Claimed const& b) { return DepthOf(a.record) > DepthOf(b.record); });
    return CheckSubclasses();
}

UnregisterResult ClassEnd::CheckSubclasses() const {
    for (Claimed const& claimed : m_claimed) {
        if (ClassRegistry::HasSubclasses(*claimed.record, this)) {
            return {claimed.record, UnregisterResult::eReason::eSubclasses};
        }
    }
    return {};
}

UnregisterResult ClassEnd::CheckInstances() const noexcept {
    for (Claimed const& claimed : m_claimed) {
        if (claimed.record->Living() > 0) {
            return {claimed.record, UnregisterResult::eReason::eInstances};
        }
    }
    return {};
}

bool ClassEnd::HasHooks() const noexcept {
    return std::any_of(m_claimed.begin(), m_claimed.end(), [](Claimed const& claimed) {
        return claimed.record->m_uninitialize || claimed.record->m_pool;
    });
}

void ClassEnd::RunHooks() {
    for (Claimed& claimed : m_claimed) {
        claimed.isHookRun = true;
        claimed.record->UninitializeClass();
    }
}

UnregisterResult ClassEnd::TakeOut() {
    std::vector<Claimed> ended;
    {
        ClassRegistry::CreationScope const creation;
        UnregisterResult result = CheckSubclasses(); // again: hooks run other code
        if (result) {
            result = CheckInstances();
        }
        if (!result) {
            return result;
        }
        ended.swap(m_claimed);
        for (Claimed const& claimed : ended) {
            ClassRegistry::TakeOut(claimed.record);
        }
    }
    // A recycled typed array has the code of the shared object that made it, which may be unloaded next.
    TRecyclePool<VObjectArray>::Empty(VObjectArray::ms_recycledArrays);
    for (Claimed const& claimed : ended) {
        claimed.record->m_uninitialize = nullptr; // it has run
        claimed.record->SetPool(nullptr);
        delete claimed.record;
    }
    return {};
}

void ClassEnd::GiveBack() noexcept {
    for (Claimed const& claimed : m_claimed) {
        bool const isToStart = claimed.isHookRun && claimed.before == VClass::State::eReady;
        claimed.record->m_state.store(isToStart ? VClass::State::eUnstarted : claimed.before);
    }
}

/// Undoes what the hooks have done, superclasses first. When a hook throws, the next use of its class runs it again.
void ClassEnd::StartAgain() {
    GiveBack();
    auto const claimed = std::exchange(m_claimed, {});
    std::for_each(claimed.rbegin(), claimed.rend(), [](Claimed const& ended) {
        if (ended.before == VClass::State::eReady) {
            ClassStart::Start(*ended.record);
        }
    });
}

} // namespace VFoundation
