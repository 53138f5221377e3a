#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/VObjectRef.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

/// What other threads do whenever a thread looks at a slot; they are not watched themselves.
std::function<void()> s_onLook;
int s_looks = 0;

template <class V>
class WatchedRef : public std::atomic_ref<V> {
  public:
    using std::atomic_ref<V>::atomic_ref;
    V load() const {
        ++s_looks;
        if (auto const act = std::exchange(s_onLook, nullptr)) {
            int const looks = s_looks;
            act();
            s_onLook = act;
            s_looks = looks;
        }
        return std::atomic_ref<V>::load();
    }
};

/// A ring whose counters show.
class Ring : public TRingBuffer<ACounted, TRefCounted<ACounted>, std::atomic, WatchedRef> {
  public:
    using TRingBuffer::FreeWord;
    using TRingBuffer::TRingBuffer;
    using TRingBuffer::UsableCapacity;
    using TRingBuffer::UsedWord;
};

void PushNew(Ring& ring) {
    ASSERT_TRUE(ring.Push(VObjectRef<ACounted>::Adopt(ACounted::New()).Get()));
}
void PopAndRelease(Ring& ring) {
    ACounted* object = nullptr;
    ASSERT_TRUE(ring.Pop(&object));
    object->Release();
}

TEST(RingBuffer, TakesAsManyAsItHasRoomForAndReleasesTheRest) {
    auto const object = VObjectRef<ACounted>::Adopt(ACounted::New());
    {
        Ring ring(1);
        ACounted* out = nullptr;
        EXPECT_FALSE(ring.Push(nullptr));
        EXPECT_FALSE(ring.Pop(&out));
        EXPECT_EQ(out, nullptr);
        for (int i = 0; i < 3; ++i) {
            EXPECT_TRUE(ring.Push(object.Get()));
            EXPECT_FALSE(ring.Push(object.Get()));
            EXPECT_EQ(object->RetainCount(), 2);
            EXPECT_FALSE(ring.Pop(nullptr));
            EXPECT_TRUE(ring.Pop(&out));
            EXPECT_EQ(out, object.Get());
            EXPECT_EQ(object->RetainCount(), 2); // the ring's reference, now ours
            out->Release();
        }
        EXPECT_EQ(ring.FreeWord(), 1);
        Ring other(3);
        PushNew(other);
        PushNew(other);
        EXPECT_TRUE(other.RemoveAllObjects());
        EXPECT_EQ(ACounted::ms_alive, 1);
        PushNew(other); // left to the destructor
    }
    EXPECT_EQ(ACounted::ms_alive, 1);
}

TEST(RingBuffer, CountsInThirtyTwoBits) {
    EXPECT_EQ(Ring::UsableCapacity(static_cast<unsigned long>(-1L)), 2147483647U);
    EXPECT_EQ(Ring::UsableCapacity(0x80000000UL), 2147483647U);
    EXPECT_EQ(Ring::UsableCapacity(2147483646UL), 2147483646U);
    Ring ring(2);
    ring.UsedWord() = -1;
    EXPECT_EQ(ring.UsedCount(), 0);
    ring.UsedWord() = 1;
    EXPECT_FALSE(ring.RemoveAllObjects()); // nothing is behind the count: the pop gives up
}

TEST(RingBuffer, APushThatGivesUpLosesItsUnit) {
    auto const object = VObjectRef<ACounted>::Adopt(ACounted::New());
    {
        Ring ring(2);
        s_looks = 0;
        // Whenever the push looks at a slot, a consumer just emptied the other and a producer filled this one.
        s_onLook = [&ring] {
            if (ring.UsedCount() > 0) {
                PopAndRelease(ring);
            }
            PushNew(ring);
        };
        EXPECT_FALSE(ring.Push(object.Get()));
        s_onLook = nullptr;
        EXPECT_EQ(s_looks, 202); // two slots: 100 wraps, and the one that is refused
        EXPECT_EQ(object->RetainCount(), 1);
        EXPECT_EQ(ring.UsedCount(), 1);
        EXPECT_EQ(ring.FreeWord(), 0); // a slot is empty, but its unit is gone
        PopAndRelease(ring);
        EXPECT_TRUE(ring.Push(object.Get()));
        EXPECT_FALSE(ring.Push(object.Get()));
    }
    EXPECT_EQ(ACounted::ms_alive, 1);
}

TEST(RingBuffer, APopThatGivesUpLosesItsUnit) {
    {
        Ring ring(2);
        PushNew(ring);
        s_looks = 0;
        s_onLook = [&ring] {
            PushNew(ring);
            PopAndRelease(ring);
        };
        ACounted* out = nullptr;
        EXPECT_FALSE(ring.Pop(&out));
        s_onLook = nullptr;
        EXPECT_EQ(s_looks, 202);
        EXPECT_EQ(out, nullptr);
        EXPECT_EQ(ring.UsedCount(), 0);
        EXPECT_EQ(ring.FreeWord(), 1);
        EXPECT_EQ(ACounted::ms_alive, 1); // in its slot, but no longer counted
    }
    EXPECT_EQ(ACounted::ms_alive, 0);
}

class AnElement : public Registered<AnElement, VObject> {
  public:
    static constexpr char const* kClassName = "AnElement";
    static inline VClass* ms_theClass = nullptr;
    explicit AnElement(VClass* cls = nullptr) : Registered(cls) {}
    static AnElement* New() { return new AnElement; }
};

TEST(RingBuffer, HasOneRecordForEachElementClass) {
    using Elements = VObjectRingBufferTmpl<AnElement>;
    {
        VClass const byHand("TRingBuffer_AnElement", VObject::TheClass(), nullptr, 1, nullptr, nullptr, 1,
                            nullptr);
        EXPECT_EQ(Elements::TheClass(), &byHand); // as when another copy of the library made it
    }
    VClass* const cls = Elements::TheClass();
    EXPECT_STREQ(cls->Name(), "TRingBuffer_AnElement");
    EXPECT_EQ(cls->SuperClass(), VObject::TheClass());
    EXPECT_EQ(VClass::FindRegistered("TRingBuffer_AnElement"), cls);
    auto const placeholder = VObjectRef<VObject>::Adopt(cls->NewInstance());
    EXPECT_EQ(cls->Existing(), 1);
    auto const element = VObjectRef<AnElement>::Adopt(AnElement::New());
    EXPECT_FALSE(static_cast<TRingBuffer<AnElement>&>(*placeholder).Push(element.Get()));
}

} // namespace
