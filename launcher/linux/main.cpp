#include "launcher/LauncherRun.h"
#include "launcher/VApplication.h"
#include "launcher/linux/DialogAlertPanel.h"
#include "launcher/linux/ElevationService.h"
#include "launcher/linux/ProcessEnvironment.h"

int main(int, char** argv) {
    using namespace Launcher;
    PrepareProcess();
    SHelperPaths const paths = SHelperPaths::Installed();
    ElevationService elevation(paths);
    DialogAlertPanel alerts(paths.dialog);
    VFoundation::VApplication::SetAlertPanel(&alerts);
    return RunLauncher(argv, elevation);
}
