// The dialog program: alert, agent of polkit and password prompt of sudo in one, and the only part that loads a
// toolkit. It is started when there is something to show and leaves when its standard input closes.

#include "launcher/linux/BrokerProtocol.h"
#include "launcher/linux/DialogRoles.h"
#include "launcher/linux/HelperExit.h"
#include "launcher/linux/dialog/DialogBody.h"
#include "launcher/linux/dialog/PasswordDialog.h"
#include "launcher/linux/dialog/PolkitAgent.h"

#include <cstdlib>
#include <glib-unix.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace Launcher;

constexpr int kAlertIconSize = 48; // pixels
constexpr int kAlertArguments = 5; // program, role, three texts
constexpr int kAgentArguments = 3; // program, role, icon path
constexpr int kExitNoPassword = 1; // as sudo wants it

// Nothing that holds a password may be dumped or looked into by the user's other programs.
void ProtectMemory() {
    rlimit const none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    ::prctl(PR_SET_DUMPABLE, 0);
}

void LeaveWithLauncher() {
    g_unix_fd_add(
        STDIN_FILENO, static_cast<GIOCondition>(G_IO_HUP | G_IO_ERR),
        +[](int, GIOCondition, gpointer) -> gboolean { ::_exit(kExitUnused); }, nullptr);
}

int RunAlert(char const* message, char const* information, char const* button) {
    SDialogBody const body =
        MakeDialogBody(MakePicture({}, kAlertIconSize, "dialog-warning"), message, information);
    gtk_widget_grab_default(gtk_dialog_add_button(body.dialog, button, GTK_RESPONSE_OK));
    gtk_widget_show_all(GTK_WIDGET(body.dialog));
    gtk_dialog_run(body.dialog); // whatever closed it, the user has seen it
    gtk_widget_destroy(GTK_WIDGET(body.dialog));
    return 0;
}

int RunAskpass(char const* iconPath, char const* prompt) {
    int exitStatus = kExitNoPassword;
    PasswordDialog dialog(iconPath, {},
                          {.answered =
                               [&exitStatus](SecretText const& password) {
                                   bool const isWritten =
                                       ::write(STDOUT_FILENO, password.CString(), password.Length()) ==
                                           static_cast<ssize_t>(password.Length()) &&
                                       ::write(STDOUT_FILENO, "\n", 1) == 1;
                                   exitStatus = isWritten ? 0 : kExitNoPassword;
                                   gtk_main_quit();
                               },
                           .cancelled =
                               [] {
                                   SendWord(STDIN_FILENO, EWord::eCancelled);
                                   gtk_main_quit();
                               },
                           .userChosen = {}});
    dialog.AskFor(prompt, false);
    gtk_main();
    return exitStatus;
}

} // namespace

int main(int argc, char** argv) {
    std::string_view const role = argc > 1 ? argv[1] : "";
    char const* const askpassIcon = std::getenv(kAskpassIconVariable);
    bool const isAlert = role == kAlertRole && argc == kAlertArguments && !askpassIcon;
    bool const isAgent = role == kAgentRole && argc == kAgentArguments && !askpassIcon;
    bool const isAskpass = askpassIcon && argc == 2;
    if (!IsPacketSocket(STDIN_FILENO) || !(isAlert || isAgent || isAskpass)) {
        return kExitUsage;
    }
    if (!isAlert) {
        ProtectMemory();
    }
    g_set_prgname("QuillmarkLauncher");
    if (!gtk_init_check(nullptr, nullptr)) {
        return kExitNoDisplay;
    }
    LeaveWithLauncher();
    if (isAlert) {
        return RunAlert(argv[2], argv[3], argv[4]);
    }
    return isAgent ? RunPolkitAgent(argv[2]) : RunAskpass(askpassIcon, argv[1]);
}
