#include "foundation/containers/VHashTable.h"

namespace VFoundation {

VClass* VHashTable::ms_theClass = nullptr;

VHashTable::VHashTable(VClass* cls) : Registered(cls) {
}

VHashTable::~VHashTable() = default;

VHashTable* VHashTable::New() {
    return new VHashTable;
}

} // namespace VFoundation
