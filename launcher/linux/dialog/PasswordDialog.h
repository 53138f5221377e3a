#pragma once

#include "launcher/linux/dialog/DialogBody.h"
#include "launcher/linux/dialog/SecretText.h"

#include <functional>
#include <string>
#include <vector>

namespace Launcher {

/// Asks for an administrator's password, with the bundle's icon. The entry takes a password only while something
/// waits for one (`AskFor`), so that nothing is sent to nobody.
///
/// Ownership: the window belongs to this object. The handlers may not destroy it.
/// Threads: main thread.
class PasswordDialog {
  public:
    struct SHandlers {
        std::function<void(SecretText const& password)> answered;
        std::function<void()> cancelled;
        std::function<void(std::size_t user)> userChosen; ///< index into the names of `SetUsers`
    };

    /// `detail` is shown smaller below the text; it may be empty.
    PasswordDialog(std::string const& iconPath, std::string const& detail, SHandlers handlers);
    ~PasswordDialog();
    PasswordDialog(PasswordDialog const&) = delete;
    PasswordDialog& operator=(PasswordDialog const&) = delete;

    /// Whose password may be given; with more than one name the user chooses.
    void SetUsers(std::vector<std::string> const& names, std::size_t selected);

    /// Opens the entry, showing the window if it is not shown yet.
    void AskFor(std::string const& prompt, bool isEchoed);

    /// A line below the entry, for what the system says about the last password.
    void SetNote(std::string const& text);

    void Hide();

  private:
    void SetOpen(bool isOpen);
    void Answer();
    void OnResponse(int response);

    SHandlers m_handlers;
    SDialogBody m_body;
    GtkWidget* m_users = nullptr;
    GtkLabel* m_prompt;
    GtkEntry* m_entry;
    GtkLabel* m_note;
};

} // namespace Launcher
