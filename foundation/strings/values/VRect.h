#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/values/SRect.h"
#include "foundation/strings/values/TSavedObject.h"

namespace VFoundation {

/// A rectangle in pixels, as an object. Files hold "left", "top", "right" and "bottom" as 32-bit numbers.
///
/// Ownership: a value.
/// Threads: one thread at a time.
class VFOUNDATION_API VRect : public Registered<VRect, TSavedObject<VRect>>, public SRect {
  public:
    static constexpr char const* kClassName = "VRect";
    static VClass* ms_theClass;

    explicit VRect(VClass* cls = nullptr) : Registered(cls) {}
    explicit VRect(SRect const& rect) : VRect(nullptr, rect) {}
    VRect(VRect const& other) : VRect(nullptr, other) {}
    VRect& operator=(VRect const&) = default;

    [[nodiscard]] static VRect* New() { return new VRect; }
    static void InitializeClass() {}
    static void UninitializeClass() {}

  protected:
    /// For derived classes, with their record or null.
    VRect(VClass* cls, SRect const& rect) : Registered(cls), SRect(rect) {}

  private:
    friend class TSavedObject<VRect>;
    struct Fields;
};

extern template class TSavedObject<VRect>;

} // namespace VFoundation
