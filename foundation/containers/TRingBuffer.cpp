#include "foundation/containers/TRingBuffer.h"

#include "foundation/core/Mutex.h"

#include <cstdio>
#include <cstring>
#include <memory>

namespace VFoundation::detail {

namespace {

struct NamedSlot {
    std::unique_ptr<char[]> name;
    VClass* record = nullptr;
    NamedSlot* next = nullptr;
};

constinit Mutex s_slotsLock;
/// Never freed: the slots' addresses are kept by every instantiation.
constinit NamedSlot* s_slots VFOUNDATION_GUARDED_BY(s_slotsLock) = nullptr;

std::unique_ptr<char[]> Duplicate(char const* prefix, char const* text) {
    std::size_t const size = std::strlen(prefix) + std::strlen(text) + 1;
    auto result = std::make_unique<char[]>(size);
    std::snprintf(result.get(), size, "%s%s", prefix, text);
    return result;
}

} // namespace

VClass*& RingBufferClassSlot(char const* elementClassName) {
    MutexLock const lock(s_slotsLock);
    for (NamedSlot* slot = s_slots; slot; slot = slot->next) {
        if (std::strcmp(slot->name.get(), elementClassName) == 0) {
            return slot->record;
        }
    }
    auto slot = std::make_unique<NamedSlot>();
    slot->name = Duplicate("", elementClassName);
    slot->next = s_slots;
    s_slots = slot.release();
    return s_slots->record;
}

VClass* MakeRingBufferClass(char const* elementClassName, VClass*& slot, VClass::Factory factory,
                            unsigned long size) {
    auto const name = Duplicate("TRingBuffer_", elementClassName);
    return ReadyClass({name.get(), &VObject::TheClass, factory, nullptr, nullptr, size, &slot, true});
}

} // namespace VFoundation::detail
