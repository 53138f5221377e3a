#pragma once

#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLog.h"
#include "foundation/log/VStopWatch.h"

#include <cstdint>

namespace VFoundation {

class VString;

/// A section of the log between "[ name - START ]" and "[ name - END ] seconds", inside which lines are
/// indented by one more. `VLog::StartLoggingContext` opens one that `VLog::EndLoggingContext` closes. A
/// function that brackets itself makes a local one, whose end line is written on every way out.
///
/// The end sets the indent back to where it was at the start, whatever the code inside did to it.
///
/// Failures: what the start line throws leaves the constructor, and the context is forgotten. What the end
/// line throws leaves `VLog::EndLoggingContext`, but not the destructor.
///
/// DELIBERATE: both lines and the deeper indent go to the default log, whichever log the context belongs to;
/// only the indent that is restored is that of its own log.
///
/// Ownership: the log holds the only reference to a context that it opened. The log is borrowed: one that dies
/// before a context of its own lets go of it, and the end line is written all the same.
/// Threads: opened and closed by one thread at a time.
class VLog::VLogContext : public Registered<VLog::VLogContext, VObject> {
  public:
    static constexpr char const* kClassName = "VLogContext";
    static VClass* ms_theClass;

    /// Writes the start line. `name` is copied; null is empty. A null `log` means the default log, if there
    /// is one.
    explicit VLogContext(char const* name, VLog* log = nullptr);
    VLogContext(VLogContext const&) = delete;
    VLogContext& operator=(VLogContext const&) = delete;
    /// Writes the end line, unless `VLog::EndLoggingContext` has.
    ~VLogContext() override;
    /// A context without name on the default log.
    [[nodiscard]] static VLogContext* New();

    /// Seconds since the start.
    double GetElapsedTime() const { return m_stopWatch.GetElapsedTime(); }

  protected:
    VLogContext(VClass* cls, char const* name, VLog* log);

  private:
    friend class VLog;
    class HeaderFooterScope;

    char const* Name() const;
    void Attach(VLog* log);
    void Detach() VFOUNDATION_REQUIRES(ms_lock);
    void WriteStart();
    void WriteEnd();

    VObjectRef<VString> m_name;
    VStopWatch m_stopWatch;
    std::int32_t m_savedIndent = 0;
    bool m_hasEnded = false;
    VLog* m_log VFOUNDATION_GUARDED_BY(ms_lock) = nullptr;
    VLogContext* m_nextAttached VFOUNDATION_GUARDED_BY(ms_lock) = nullptr;
};

} // namespace VFoundation
