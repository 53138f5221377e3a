#include "foundation/threads/VJobPoolTicket.h"

namespace VFoundation {

VClass* VJobPoolTicket::ms_theClass = nullptr;

} // namespace VFoundation
