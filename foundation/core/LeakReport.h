#pragma once

#include "foundation/core/Export.h"

#include <string>
#include <vector>

namespace VFoundation {

/// Finds the objects that an application forgot to release. From `Start()` on it notes every object that is made, so
/// that what the library makes at its own start is not listed:
///
///     LibraryScope library;
///     LeakReport::Start(LeakReport::eCallStacks);
///     RunTheApplication();
///     library.End(); // empties the pools, whose objects would be listed too
///     std::fputs(LeakReport::Text().c_str(), stderr);
///
/// It works in a debug build of the library, one without `NDEBUG`; any other notes nothing. There, too, an object that
/// is destroyed while others hold it, such as a member that was put into a container, is reported on the standard
/// error stream, whether or not notes are taken:
/// "[VString] destroyed while 1 others hold it".
///
/// Call stacks name the functions of a program that is linked with -rdynamic; `addr2line` finds the others.
///
/// Cost: a look-up for each object made and destroyed, with call stacks some microseconds more; nothing while
/// stopped.
/// Ownership: holds no reference to what it notes.
/// Threads: any thread may call any operation.
class VFOUNDATION_API LeakReport {
  public:
    LeakReport() = delete;

    enum eDetail : int { eCounts, eCallStacks };

    /// The objects of one class.
    struct Entry {
        std::string className;
        long alive;
        long peak;                           // the most that were alive at once
        std::vector<std::string> callStacks; // where each living one was made, if asked for
    };

    /// Starts anew. False in a build that notes nothing.
    static bool Start(eDetail detail);
    /// Forgets all notes and takes no more.
    static void Stop();
    /// The classes with living objects, by name. An object that there was no memory to note is missing.
    [[nodiscard]] static std::vector<Entry> Entries();
    /// The same as text: a line for each class, "<class>: <alive> alive, <peak> at most", and the call stacks below it.
    /// Empty when nothing was forgotten.
    [[nodiscard]] static std::string Text();
};

} // namespace VFoundation
