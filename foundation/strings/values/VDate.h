#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/values/TSavedObject.h"

#include <compare>

namespace VFoundation {

/// A moment, in whole seconds. Files hold "seconds" as a 64-bit number.
///
///     VString const text = VDate::Now().AsString();       // "Sun Nov 15 23:07:59 2026"
///
/// Ownership: a value.
/// Threads: one thread at a time per date; the static functions from any thread.
class VFOUNDATION_API VDate : public Registered<VDate, TSavedObject<VDate>> {
  public:
    static constexpr char const* kClassName = "VDate";
    static VClass* ms_theClass;

    /// Seconds since the start of 1970 (UTC), negative before.
    explicit VDate(long long seconds = 0) : VDate(nullptr, seconds) {}
    VDate(VDate const& other) : VDate(nullptr, other.m_seconds) {}
    VDate& operator=(VDate const&) = default;

    [[nodiscard]] static VDate* New() { return new VDate; }
    static VDate Now();

    long long Seconds() const noexcept { return m_seconds; }
    void SetSeconds(long long seconds) noexcept { m_seconds = seconds; }

    /// The local time as "Sun Nov 15 23:07:59 2026", without a line feed, in English whatever the locale. Empty when
    /// the calendar has no such date.
    VString AsString() const;
    static VString NowAsString();

    auto operator<=>(VDate const& other) const noexcept { return m_seconds <=> other.m_seconds; }
    bool operator==(VDate const& other) const noexcept { return m_seconds == other.m_seconds; }

    /// "[<class name>] " and the text of `AsString`.
    void GetDescription(VString& out) const override;

  protected:
    /// For derived classes, with their record or null.
    VDate(VClass* cls, long long seconds) : Registered(cls), m_seconds(seconds) {}

  private:
    friend class TSavedObject<VDate>;
    struct Fields;

    long long m_seconds;
};

extern template class TSavedObject<VDate>;

} // namespace VFoundation
