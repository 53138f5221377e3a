#pragma once

#include <cerrno>
#include <cstdio>

namespace testing_support {

/// While it lives, files that the library opens for reading end early or fail: after so many bytes from their start.
/// For programs with the source of the same name that are linked with --wrap=fdopen.
class FailingReads {
  public:
    /// `error` is what reading fails with; 0 for a file that ends there, as one that is cut while it is read. Reads
    /// that begin in the last `spared` bytes of a file go well.
    explicit FailingReads(long readable, int error = EIO, long spared = 0) {
        ms_readable = readable;
        ms_error = error;
        ms_spared = spared;
    }
    FailingReads(FailingReads const&) = delete;
    FailingReads& operator=(FailingReads const&) = delete;
    ~FailingReads() { ms_readable = -1; }

    static inline long ms_readable = -1; // less than 0: reads do not fail
    static inline int ms_error = 0;
    static inline long ms_spared = 0;
};

} // namespace testing_support
