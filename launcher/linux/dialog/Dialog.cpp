// The dialog program: alert, agent of polkit and password prompt of sudo in one, and the only part that loads a
// toolkit. It is started when there is something to show and leaves when its standard input closes.

#include "launcher/linux/BrokerProtocol.h"
#include "launcher/linux/DialogRoles.h"
#include "launcher/linux/HelperExit.h"
#include "launcher/linux/dialog/DialogBody.h"
#include "launcher/linux/dialog/DisplayWatch.h"
#include "launcher/linux/dialog/PasswordDialog.h"
#include "launcher/linux/dialog/PolkitAgent.h"

#include <csignal>
#include <cstdlib>
#include <gdk/gdkx.h>
#include <glib-unix.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace Launcher;

constexpr int kAlertIconSize = 48;                            // pixels
constexpr int kAlertArguments = 5;                            // program, role, three texts
constexpr int kAgentArguments = 4;                            // program, role, icon path, program to start
constexpr int kExitNoPassword = 1;                            // as sudo wants it
constexpr char kApplicationName[] = "com.quillmark.Launcher"; // of the menu entry, for the task bar's icon

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
    atk_object_set_role(gtk_widget_get_accessible(GTK_WIDGET(body.dialog)), ATK_ROLE_ALERT);
    AddButton(body, button, GTK_RESPONSE_OK, true);
    g_signal_connect(body.dialog, "response", G_CALLBACK(gtk_main_quit), nullptr); // whatever closed it, the
    g_signal_connect(body.dialog, "destroy", G_CALLBACK(gtk_main_quit), nullptr);  // user has seen it
    ShowDialog(body);
    SendWord(STDIN_FILENO, EWord::eReady);
    gtk_main();
    return 0;
}

void WritePassword(SecretText const& password, int* exitStatus) {
    bool const isWritten = ::write(STDOUT_FILENO, password.CString(), password.Length()) ==
                               static_cast<ssize_t>(password.Length()) &&
                           ::write(STDOUT_FILENO, "\n", 1) == 1;
    *exitStatus = isWritten ? 0 : kExitNoPassword;
    gtk_main_quit();
}

int RunAskpass(char const* iconPath, std::string_view prompt) {
    int exitStatus = kExitNoPassword;
    char const* const program = std::getenv(kAskpassProgramVariable);
    PasswordDialog dialog(
        iconPath, ReasonToStart(program ? program : ""),
        {.answered = [&exitStatus](SecretText const& password) { WritePassword(password, &exitStatus); },
         .cancelled =
             [] {
                 SendWord(STDIN_FILENO, EWord::eCancelled);
                 gtk_main_quit();
             },
         .userChosen = {}});
    if (prompt.starts_with(kAskpassPasswordOf)) {
        dialog.AskForPasswordOf(std::string(prompt.substr(std::string_view(kAskpassPasswordOf).size())));
    } else {
        dialog.AskFor(std::string(prompt), false);
    }
    gtk_main();
    return exitStatus;
}

bool OpenDisplay() {
    DisplayWatch const watch;
    if (gtk_init_check(nullptr, nullptr)) {
        GdkDisplay* const display = gdk_display_get_default();
        if (GDK_IS_X11_DISPLAY(
                display)) { // for good: a window that another program destroys must not end this one
            gdk_x11_display_error_trap_push(display);
        }
        return true;
    }
    SendWord(STDIN_FILENO, EWord::eNoDisplay);
    return false;
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
    ::prctl(PR_SET_PDEATHSIG, SIGKILL); // until there is a loop that watches the launcher
    g_set_prgname(kApplicationName);
    if (!OpenDisplay()) {
        return kExitNoDisplay;
    }
    LeaveWithLauncher();
    if (isAlert) {
        return RunAlert(argv[2], argv[3], argv[4]);
    }
    return isAgent ? RunPolkitAgent(argv[2], argv[3]) : RunAskpass(askpassIcon, argv[1]);
}
