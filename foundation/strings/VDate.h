#pragma once

#include "foundation/core/Registered.h"

#include <compare>

namespace VFoundation {

/// A moment, in whole seconds.
///
///     VString const text = VDate::Now().AsString();       // "Sun Nov 15 23:07:59 2026"
///
/// Ownership: a value.
/// Threads: one thread at a time per date; the static functions from any thread.
class VDate : public Registered<VDate, VObject> {
  public:
    static constexpr char const* kClassName = "VDate";
    static VClass* ms_theClass;

    /// The start of 1970.
    explicit VDate(VClass* cls = nullptr) : Registered(cls) {}
    /// Seconds since the start of 1970 in Greenwich, negative before.
    explicit VDate(long long seconds) : Registered(nullptr), m_seconds(seconds) {}
    VDate(VDate const& other) : Registered(nullptr), m_seconds(other.m_seconds) {}
    VDate& operator=(VDate const&) = default;

    static VDate* New() { return new VDate; }
    static VDate Now();

    long long Seconds() const noexcept { return m_seconds; }
    void SetSeconds(long long seconds) noexcept { m_seconds = seconds; }

    /// The local time as "Sun Nov 15 23:07:59 2026", without a line feed and in English whatever the locale.
    /// Empty for a date beyond the calendar.
    VString AsString() const;
    static VString NowAsString();

    auto operator<=>(VDate const& other) const noexcept { return m_seconds <=> other.m_seconds; }
    bool operator==(VDate const& other) const noexcept { return m_seconds == other.m_seconds; }
    /// Same class and same moment.
    bool IsEqual(VObject const& other) const override;
    VDate* Copy() const override;

    /// "[<class name>] " and the text of `AsString`.
    void GetDescription(VString& out) const override;
    /// The seconds as a 64-bit number. True.
    bool Serialize(IAIFile& file) override;

  private:
    long long m_seconds = 0;
};

} // namespace VFoundation
