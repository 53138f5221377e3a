#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

#include <cstdint>

namespace VFoundation {

/// Empty on purpose: a registered name without operations. For look-up by key use `VDictionary`.
///
/// Ownership: by reference count.
/// Threads: any.
class VFOUNDATION_API VHashTable : public Registered<VHashTable, VObject> {
  public:
    static constexpr char const* kClassName = "VHashTable";
    static VClass* ms_theClass;

    explicit VHashTable(VClass* cls = nullptr);
    VHashTable(VHashTable const&) = delete;
    VHashTable& operator=(VHashTable const&) = delete;
    ~VHashTable() override;
    [[nodiscard]] static VHashTable* New();

  private:
    [[maybe_unused]] std::int32_t m_nBuckets = 0;
    [[maybe_unused]] std::int32_t m_nCount = 0;
    [[maybe_unused]] std::int32_t m_nAllocated = 0;
    [[maybe_unused]] std::int32_t m_nGrowSize = 32;
};

} // namespace VFoundation
