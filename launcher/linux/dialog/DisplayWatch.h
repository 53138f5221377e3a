#pragma once

namespace Launcher {

/// While this object lives, a display that does not answer within `kDisplayTimeOut` ends the process: it says
/// `EWord::eNoDisplay` on its standard input and exits with `kExitNoDisplay`. A toolkit that waits for a server
/// cannot be told to stop.
///
/// Threads: main thread; one object at a time.
class DisplayWatch {
  public:
    DisplayWatch();
    ~DisplayWatch();
    DisplayWatch(DisplayWatch const&) = delete;
    DisplayWatch& operator=(DisplayWatch const&) = delete;
};

} // namespace Launcher
