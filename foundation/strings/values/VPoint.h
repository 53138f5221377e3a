#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/values/SPoint.h"
#include "foundation/strings/values/TSavedObject.h"

namespace VFoundation {

/// A position in pixels, as an object. Files hold "x" and "y" as 32-bit numbers.
///
/// Ownership: a value.
/// Threads: one thread at a time.
class VFOUNDATION_API VPoint : public Registered<VPoint, TSavedObject<VPoint>>, public SPoint {
  public:
    static constexpr char const* kClassName = "VPoint";
    static VClass* ms_theClass;

    explicit VPoint(VClass* cls = nullptr) : Registered(cls) {}
    explicit VPoint(SPoint const& point) : VPoint(nullptr, point) {}
    VPoint(VPoint const& other) : VPoint(nullptr, other) {}
    VPoint& operator=(VPoint const&) = default;

    [[nodiscard]] static VPoint* New() { return new VPoint; }
    static void InitializeClass() {}
    static void UninitializeClass() {}

  protected:
    /// For derived classes, with their record or null.
    VPoint(VClass* cls, SPoint const& point) : Registered(cls), SPoint(point) {}

  private:
    friend class TSavedObject<VPoint>;
    struct Fields;
};

extern template class TSavedObject<VPoint>;

} // namespace VFoundation
