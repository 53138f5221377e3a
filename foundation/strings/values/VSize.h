#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/values/SSize.h"
#include "foundation/strings/values/TSavedObject.h"

namespace VFoundation {

/// An extent in pixels, as an object. Files hold "width" and "height" as 32-bit numbers.
///
/// Ownership: a value.
/// Threads: one thread at a time.
class VFOUNDATION_API VSize : public Registered<VSize, TSavedObject<VSize>>, public SSize {
  public:
    static constexpr char const* kClassName = "VSize";
    static VClass* ms_theClass;

    explicit VSize(VClass* cls = nullptr) : Registered(cls) {}
    explicit VSize(SSize const& size) : VSize(nullptr, size) {}
    VSize(VSize const& other) : VSize(nullptr, other) {}
    VSize& operator=(VSize const&) = default;

    [[nodiscard]] static VSize* New() { return new VSize; }

  protected:
    /// For derived classes, with their record or null.
    VSize(VClass* cls, SSize const& size) : Registered(cls), SSize(size) {}

  private:
    friend class TSavedObject<VSize>;
    struct Fields;
};

extern template class TSavedObject<VSize>;

} // namespace VFoundation
