#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/containers/VSet.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/internal/ClassRegistry.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

/// What other threads do whenever a thread looks at a slot; they are not watched themselves.
std::function<void()> s_onLook;

template <class V>
struct WatchedRef : std::atomic_ref<V> {
    using std::atomic_ref<V>::atomic_ref;
    V load() const {
        if (auto const act = std::exchange(s_onLook, nullptr)) {
            act();
            s_onLook = act;
        }
        return std::atomic_ref<V>::load();
    }
};

/// A ring whose counters show.
struct Ring : TRingBuffer<ACounted, TRefCounted<ACounted>, std::atomic, WatchedRef> {
    using TRingBuffer::CursorEnd;
    using TRingBuffer::FreeWord;
    using TRingBuffer::TRingBuffer;
    using TRingBuffer::UsableCapacity;
    using TRingBuffer::UsedWord;
};

TEST(TRingBuffer, TakesAsManyAsItHasRoomForAndReleasesTheRest) {
    ACounted object;
    {
        Ring ring(1);
        ACounted* out = nullptr;
        EXPECT_FALSE(ring.Push(nullptr));
        EXPECT_FALSE(ring.Pop(&out));
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(ring.Push(&object));
            EXPECT_FALSE(ring.Push(&object));
            EXPECT_FALSE(ring.Pop(nullptr));
            EXPECT_TRUE(ring.Pop(&out));
            EXPECT_EQ(out, &object);
            EXPECT_EQ(object.RetainCount(), 2); // the ring's reference, now ours
            out->Release();
        }
        EXPECT_TRUE(ring.Push(&object));
        EXPECT_TRUE(ring.RemoveAllObjects());
        EXPECT_EQ(object.RetainCount(), 1);
        EXPECT_TRUE(ring.Push(&object)); // left to the destructor
    }
    EXPECT_EQ(object.RetainCount(), 1);
}

TEST(TRingBuffer, KeepsTheOrderWhereItsCursorsStartAgain) {
    for (unsigned long const capacity : {3UL, 4UL}) {
        ACounted objects[2];
        Ring ring(capacity);
        for (auto cursor : {ring.UsedWord(), ring.FreeWord()}) {
            cursor.SetCursor(ring.CursorEnd() - 5);
        }
        ring.Push(&objects[0]);
        for (int i = 1; i < 12; ++i) {
            ACounted* out = nullptr;
            EXPECT_TRUE(ring.Push(&objects[i % 2]));
            EXPECT_TRUE(ring.Pop(&out));
            EXPECT_EQ(out, &objects[(i - 1) % 2]) << i;
            out->Release();
        }
        EXPECT_LT(ring.UsedWord().Cursor(), 12U);
        EXPECT_EQ(ring.UsedCount(), 1);
    }
}

TEST(TRingBuffer, CountsInThirtyTwoBits) {
    EXPECT_EQ(Ring::UsableCapacity(static_cast<unsigned long>(-1L)), 2147483647U);
    EXPECT_EQ(Ring::UsableCapacity(2147483646UL), 2147483646U);
    Ring ring(2);
    ring.UsedWord() = 1;
    EXPECT_FALSE(ring.RemoveAllObjects()); // the count is wrong: the pop gives up
    ring.UsedWord() = -1;                  // another pop is on its way out
    EXPECT_EQ(ring.UsedCount(), 0);
    EXPECT_TRUE(ring.RemoveAllObjects());
}

TEST(TRingBuffer, APushThatGivesUpLosesItsUnit) {
    ACounted object;
    ACounted other;
    Ring ring(2);
    int looks = 0;
    // Whenever the push looks at a slot, a consumer just emptied the other and a producer filled this one.
    s_onLook = [&] {
        ACounted* out = nullptr;
        if (++looks > 1 && ring.Pop(&out)) {
            out->Release();
        }
        EXPECT_TRUE(ring.Push(&other));
    };
    EXPECT_FALSE(ring.Push(&object));
    s_onLook = nullptr;
    EXPECT_EQ(looks, 202); // two slots: 100 wraps, and the one that is refused
    EXPECT_EQ(object.RetainCount(), 1);
    EXPECT_EQ(ring.UsedCount(), 1);
    EXPECT_EQ(ring.FreeWord(), 0); // a slot is empty, but its unit is gone
}

TEST(TRingBuffer, APopThatGivesUpLosesItsUnit) {
    ACounted object;
    {
        Ring ring(2);
        ACounted* out = nullptr;
        int looks = 0;
        EXPECT_TRUE(ring.Push(&object));
        s_onLook = [&] {
            ++looks;
            ASSERT_TRUE(ring.Push(&object));
            ASSERT_TRUE(ring.Pop(&out));
            out->Release();
        };
        EXPECT_FALSE(ring.Pop(&out));
        s_onLook = nullptr;
        EXPECT_EQ(looks, 202);
        EXPECT_EQ(ring.UsedCount(), 0);
        EXPECT_EQ(object.RetainCount(), 2); // in its slot, but no longer counted
    }
    EXPECT_EQ(object.RetainCount(), 1);
}

TEST(TRingBuffer, HasOneRecordForEachElementClass) {
    VClass* const cls = VObjectRingBufferTmpl<VSet::VSetMember>::TheClass();
    EXPECT_EQ(ClassRegistry::FindExactly("TRingBuffer_VSetMember"), cls);
    auto const withoutSlots = VObjectRef<VObject>::Adopt(cls->NewInstance());
    EXPECT_EQ(cls->Existing(), 1);
    VSet::VSetMember member;
    EXPECT_FALSE(static_cast<TRingBuffer<VSet::VSetMember>&>(*withoutSlots).Push(&member));
}

} // namespace
