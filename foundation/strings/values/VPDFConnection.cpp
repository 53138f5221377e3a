#include "foundation/strings/values/VPDFConnection.h"

#include "foundation/strings/values/internal/SavedFields.h"

namespace VFoundation {

struct VPDFConnection::Fields {
    static constexpr std::tuple kAll{SavedField{"connection_name", &VPDFConnection::m_name},
                                     SavedField{"connection_page", &VPDFConnection::m_page}};
};

template class TSavedObject<VPDFConnection>;

VClass* VPDFConnection::ms_theClass = nullptr;

} // namespace VFoundation
