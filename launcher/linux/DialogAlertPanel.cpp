#include "launcher/linux/DialogAlertPanel.h"

#include "launcher/linux/DialogRoles.h"
#include "launcher/linux/HelperProcess.h"
#include "launcher/linux/ProcessEnvironment.h"

#include <sys/wait.h>

namespace Launcher {

namespace {

// A display that does not answer ends the dialog after `kDisplayTimeOut`; this is for one that hangs otherwise.
constexpr int kShowTimeOut = 10000;

} // namespace

bool DialogAlertPanel::RunModal(SAlert const& alert) {
    std::unique_ptr<HelperProcess> const dialog = HelperProcess::Start(
        {.path = m_dialogPath,
         .arguments = {kAlertRole, alert.messageText, alert.informativeText, alert.buttonTitle},
         .environment = OwnEnvironment()});
    if (!dialog) {
        return false;
    }
    if (dialog->Receive(kShowTimeOut) != EWord::eReady) {
        dialog->Kill();
        return false;
    }
    std::optional<int> const status = dialog->WaitForExit();
    return status && WIFEXITED(*status) && WEXITSTATUS(*status) == 0;
}

} // namespace Launcher
