#include "launcher/linux/DialogAlertPanel.h"

#include "launcher/linux/DialogRoles.h"
#include "launcher/linux/HelperProcess.h"
#include "launcher/linux/ProcessEnvironment.h"

#include <sys/wait.h>

namespace Launcher {

bool DialogAlertPanel::RunModal(SAlert const& alert) {
    std::unique_ptr<HelperProcess> const dialog = HelperProcess::Start(
        {.path = m_dialogPath,
         .arguments = {kAlertRole, alert.messageText, alert.informativeText, alert.buttonTitle},
         .environment = OwnEnvironment()});
    if (!dialog) {
        return false;
    }
    std::optional<int> const status = dialog->WaitForExit();
    return status && WIFEXITED(*status) && WEXITSTATUS(*status) == 0;
}

} // namespace Launcher
