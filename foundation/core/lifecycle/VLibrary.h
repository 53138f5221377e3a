#pragma once

#include "foundation/core/Export.h"

namespace VFoundation {

/// Starts the library: registers every class in a fixed order, makes pools and tables and lets the log run.
/// Calls nest; only the first one does the work. The argument is accepted and ignored. Classes of the library's
/// users that outlived an earlier end are set up again too, last.
///
/// An exception of a class's `InitializeClass`, or `std::bad_alloc`, reaches the caller. Such a start counts: end it
/// once. The next start sets up what this one did not.
///
/// `LibraryScope` pairs it with its end.
///
/// Threads: the main thread, before other threads use the library.
VFOUNDATION_API void InitializeLibrary(bool unused);

/// Ends the library when it is called as often as `InitializeLibrary`: stops the log's writer thread, empties
/// the pools, ends singletons and tables and the default log. It can be started again afterwards.
///
/// `destroyRegistry`: the class records go too; those of classes with living objects stay.
/// `dumpClasses`: print the statistics table of the classes that still have objects.
/// `quiet`: no log context around it and no closing line.
///
/// A `VException` on the way reaches the caller as a copy; any other exception becomes a `VException` whose
/// text is "Unknown exception in UninitializeLibrary, stage:<0, 2, 3, 8 or 10>". The steps after it do not
/// run.
///
/// DELIBERATE: an inner call that is not quiet opens the context "VFoundation::UninitializeLibrary" and
/// leaves it open; the log's indentation shows that the library is still in use.
///
/// Threads: the main thread, after every other thread that uses the library was stopped.
VFOUNDATION_API void UninitializeLibrary(bool destroyRegistry, bool dumpClasses, bool quiet);

/// Starts the library, and ends it with the scope:
///
///     int main() {
///         LibraryScope library;
///         RegisterClasses<Photo, Album>(); // the application's own, so that files can name them
///         RunTheApplication();             // its objects are gone when this returns
///         library.End();
///     }
///
/// Threads: as `InitializeLibrary`, at both ends.
class VFOUNDATION_API LibraryScope {
  public:
    /// Throws what `InitializeLibrary` throws; the failed start is ended then.
    LibraryScope();
    LibraryScope(LibraryScope const&) = delete;
    LibraryScope& operator=(LibraryScope const&) = delete;
    /// Ends the library if `End` has not: without a line in the log, and nothing that goes wrong is passed on.
    // NOLINTNEXTLINE(bugprone-exception-escape)
    ~LibraryScope();

    /// Ends the library as `UninitializeLibrary(true, dumpClasses, true)` does, and throws what that throws. Nothing
    /// the second time.
    void End(bool dumpClasses = false);

  private:
    bool m_isRunning = true;
};

/// True between the first `InitializeLibrary` and the full shut-down.
[[nodiscard]] VFOUNDATION_API bool IsLibraryInitialized() noexcept;

} // namespace VFoundation
