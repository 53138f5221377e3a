#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/values/TInterval.h"
#include "foundation/strings/values/TSavedObject.h"

#include <cstdint>

namespace VFoundation {

/// A run of positions: where it starts and how many there are. Files hold "location" and "length" as 32-bit
/// numbers.
///
/// The length is never negative, and the end is a 32-bit number: a longer range is cut off there.
///
/// Ownership: a value.
/// Threads: one thread at a time.
class VFOUNDATION_API VRange : public Registered<VRange, TSavedObject<VRange>>,
                               private TInterval<std::int32_t> {
  public:
    static constexpr char const* kClassName = "VRange";
    static VClass* ms_theClass;

    VRange() : VRange(0, 0) {}
    VRange(std::int32_t location, std::int32_t length) : VRange(nullptr, {location, length}) {}
    VRange(VRange const& other) : VRange(nullptr, other) {}
    VRange& operator=(VRange const&) = default;
    [[nodiscard]] static VRange* New() { return new VRange; }

    std::int32_t Location() const noexcept { return m_start; }
    std::int32_t Length() const noexcept { return m_length; }
    void Set(std::int32_t location, std::int32_t length) noexcept;

    using TInterval::Contains;
    using TInterval::End;
    using TInterval::IsEmpty;
    /// What lies in both; empty and at 0 when nothing does.
    VRange Intersection(VRange const& other) const { return {nullptr, TInterval::Intersection(other)}; }
    /// The smallest range that holds both, its length cut to 32 bits. An empty range adds nothing.
    VRange Union(VRange const& other) const { return {nullptr, TInterval::Union(other)}; }
    bool operator==(VRange const& other) const noexcept { return TInterval::operator==(other); }

  protected:
    /// For derived classes, with their record or null.
    VRange(VClass* cls, TInterval const& interval);
    void MembersLoaded() override { Normalise(); }

  private:
    friend class TSavedObject<VRange>;
    struct Fields;
};

extern template class TSavedObject<VRange>;

} // namespace VFoundation
