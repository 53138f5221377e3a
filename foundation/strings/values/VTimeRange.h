#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/values/TInterval.h"
#include "foundation/strings/values/TSavedObject.h"

namespace VFoundation {

/// A span of time: when it starts and how long it lasts, in seconds. Files hold "start" and "duration" as
/// doubles.
///
/// The duration is never negative, and the end is finite: a longer span is cut off there. NaN counts as 0.
///
/// Ownership: a value.
/// Threads: one thread at a time.
class VFOUNDATION_API VTimeRange : public Registered<VTimeRange, TSavedObject<VTimeRange>>,
                                   private TInterval<double> {
  public:
    static constexpr char const* kClassName = "VTimeRange";
    static VClass* ms_theClass;

    VTimeRange() : VTimeRange(0.0, 0.0) {}
    VTimeRange(double start, double duration) : VTimeRange(nullptr, {start, duration}) {}
    VTimeRange(VTimeRange const& other) : VTimeRange(nullptr, other) {}
    VTimeRange& operator=(VTimeRange const&) = default;
    [[nodiscard]] static VTimeRange* New() { return new VTimeRange; }

    double Start() const noexcept { return m_start; }
    double Duration() const noexcept { return m_length; }
    void Set(double start, double duration) noexcept;

    using TInterval::Contains;
    using TInterval::End;
    using TInterval::IsEmpty;
    /// What lies in both; empty and at 0 when nothing does.
    VTimeRange Intersection(VTimeRange const& other) const {
        return {nullptr, TInterval::Intersection(other)};
    }
    /// The smallest span that holds both. An empty one adds nothing.
    VTimeRange Union(VTimeRange const& other) const { return {nullptr, TInterval::Union(other)}; }
    bool operator==(VTimeRange const& other) const noexcept { return TInterval::operator==(other); }

  protected:
    /// For derived classes, with their record or null.
    VTimeRange(VClass* cls, TInterval const& interval);
    void MembersLoaded() override { Normalise(); }

  private:
    friend class TSavedObject<VTimeRange>;
    struct Fields;
};

extern template class TSavedObject<VTimeRange>;

} // namespace VFoundation
