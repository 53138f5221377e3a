#include "foundation/containers/VSet.h"

namespace VFoundation {

VClass* VSet::ms_theClass = nullptr;
VClass* VSet::VSetMember::ms_theClass = nullptr;

template class TRingBuffer<VSet::VSetMember, TRefCounted<VSet::VSetMember>>;

VSet::VSet(VClass* cls) : Registered(cls) {
}

VSet::~VSet() = default;

VSet* VSet::New() {
    return new VSet;
}

VSet::VSetMember::VSetMember(VClass* cls) : Registered(cls) {
}

VSet::VSetMember::~VSetMember() = default;

VSet::VSetMember* VSet::VSetMember::New() {
    return new VSetMember;
}

} // namespace VFoundation
