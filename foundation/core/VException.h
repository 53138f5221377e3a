#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/strings/VString.h"

#include <atomic>
#include <cstdint>
#include <exception>

namespace VFoundation {

/// The one exception type that the library throws. It says what kind of failure it was (`Id`), who raised it,
/// and a free text; code it passes through may append to its trace.
///
///     catch (VException const& exception) { VLog::Trace(exception); }
///
/// It is a `std::exception` too, for handlers that know nothing of this library.
///
/// DELIBERATE: every construction, copies included, writes the description to the log and sets
/// `VExceptionManager::ExceptionHasOccured()`; a thrown exception leaves a line even if it is never caught.
/// What the log throws meanwhile is dropped: it must not take the exception's place.
///
/// Ownership: thrown and caught by value or reference. The source object is borrowed, and may be gone by the time
/// the exception is caught: look at it only where it is known to live. Its class is named in the description all
/// the same.
/// Threads: one thread at a time.
class VFOUNDATION_API VException : public Registered<VException, VObject>, public std::exception {
  public:
    static constexpr char const* kClassName = "VException";
    static VClass* ms_theClass;

    /// Kinds of failure; any other number reads "Unrecognized exception".
    enum eID : long {
        eUnrecognized = 0,
        eOutOfMemory = 1,
        eNullPointer = 2,
        eObjectCreation = 3,
        eUnknown = 4,
        eFileNotFound = 5,
        eFileNotReadable = 6,
        eFileNotWriteable = 7
    };

    /// `description` may be null; a `stage` below 0 means none.
    VException(long id, VObject const* source, char const* description, int stage);
    VException(VException const& other);
    VException& operator=(VException const&) = delete;

    [[nodiscard]] static VException* New() { return new VException(eUnrecognized, nullptr, nullptr, -1); }
    /// Does nothing.
    static void InitializeClass() {}
    /// Releases the product name and the report address.
    static void UninitializeClass();

    long Id() const noexcept { return m_id; }
    /// Null when unknown.
    VObject const* Source() const noexcept { return m_source; }
    VString const& DescriptionText() const noexcept { return m_description; }
    VString const& StackTrace() const noexcept { return m_trace; }
    int Stage() const noexcept { return m_stage; }
    /// The description, or what kind of failure it was when there is none. Valid as long as the exception.
    char const* what() const noexcept override;

    /// Appends "<function>()", the stage if it is 0 or more, and a line feed to the trace.
    void AppendStackTrace(char const* function, int stage);

    void GetDescription(VString& out) const override;

    /// For an application's own reports; owned by the class once set, null until then.
    static VString* ms_productName;
    static VString* ms_exceptionReportEmail;

  private:
    void Announce() const;

    std::int32_t m_id;
    VObject const* m_source;
    VString m_description;
    VString m_trace;
    std::int32_t m_stage;
    VString m_sourceClass; // copied while the source lives
};

/// Remembers whether any `VException` was made in this process.
///
/// Threads: any.
class VFOUNDATION_API VExceptionManager {
  public:
    static bool ExceptionHasOccured() noexcept {
        return ms_bExceptionHasOccured.load(std::memory_order_relaxed);
    }

    /// Never cleared by the library. Relaxed: a flag that says nothing of other memory.
    static std::atomic<bool> ms_bExceptionHasOccured;
};

} // namespace VFoundation
