#include "launcher/linux/dialog/DisplayWatch.h"

#include "launcher/linux/BrokerProtocol.h"
#include "launcher/linux/DialogRoles.h"
#include "launcher/linux/HelperExit.h"

#include <csignal>
#include <unistd.h>

namespace Launcher {

DisplayWatch::DisplayWatch() {
    sigset_t alarm;
    ::sigemptyset(&alarm);
    ::sigaddset(&alarm, SIGALRM);
    ::signal(SIGALRM, [](int) {
        SendWord(STDIN_FILENO, EWord::eNoDisplay);
        ::_exit(kExitNoDisplay);
    });
    ::sigprocmask(SIG_UNBLOCK, &alarm, nullptr);
    ::alarm(kDisplayTimeOut);
}

DisplayWatch::~DisplayWatch() {
    ::alarm(0);
}

} // namespace Launcher
