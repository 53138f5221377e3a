#pragma once

#include "foundation/containers/TRingBuffer.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

namespace VFoundation {

/// Empty on purpose: a registered name without operations. For a list without duplicates use `VObjectArrayTmpl::AddObjectTyped`.
///
/// Ownership: by reference count.
/// Threads: any.
class VFOUNDATION_API VSet : public Registered<VSet, VObject> {
  public:
    static constexpr char const* kClassName = "VSet";
    static VClass* ms_theClass;

    explicit VSet(VClass* cls = nullptr);
    VSet(VSet const&) = delete;
    VSet& operator=(VSet const&) = delete;
    ~VSet() override;
    [[nodiscard]] static VSet* New();

    class VSetMember;
};

/// What a set would hold; it has no operations either, but a ring buffer of its own kind.
///
/// Ownership: by reference count.
/// Threads: any.
class VSet::VSetMember : public Registered<VSet::VSetMember, VObject> {
  public:
    static constexpr char const* kClassName = "VSetMember";
    static VClass* ms_theClass;

    explicit VSetMember(VClass* cls = nullptr);
    VSetMember(VSetMember const&) = delete;
    VSetMember& operator=(VSetMember const&) = delete;
    ~VSetMember() override;
    [[nodiscard]] static VSetMember* New();
};

extern template class TRingBuffer<VSet::VSetMember, TRefCounted<VSet::VSetMember>>;

} // namespace VFoundation
