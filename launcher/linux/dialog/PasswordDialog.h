#pragma once

#include "launcher/linux/dialog/DialogBody.h"
#include "launcher/linux/dialog/SecretText.h"

#include <functional>
#include <string>
#include <vector>

namespace Launcher {

/// What a password is asked for.
struct SPasswordReason {
    std::string text;   ///< which bundle asks for what
    std::string detail; ///< the full path of it
};

/// The reason when `program` is to start, or when that is not chosen yet (empty): names this program's own bundle.
SPasswordReason ReasonToStart(std::string const& program);

/// Asks for an administrator's password, with the bundle's icon. The entry takes a password only while something
/// waits for one (`AskFor`), so that none is lost. A window that something else destroys counts as cancelled.
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

    PasswordDialog(std::string const& iconPath, SPasswordReason const& reason, SHandlers handlers);
    ~PasswordDialog();
    PasswordDialog(PasswordDialog const&) = delete;
    PasswordDialog& operator=(PasswordDialog const&) = delete;

    /// Whose password may be given; with more than one name the user chooses.
    void SetUsers(std::vector<std::string> const& names, std::size_t selected);

    /// Opens the entry for the password of that user, showing the window if it is not shown yet.
    void AskForPasswordOf(std::string const& user);

    /// The same for a question of another kind, with its text as it came.
    void AskFor(std::string const& prompt, bool isEchoed);

    /// A line below the entry, for what the system says about the last password; empty removes it.
    void SetNote(std::string const& text);

    void Hide();

  private:
    void AddFields();
    void AddButtons();
    void ShowPrompt(std::string const& labelWithMnemonic, bool isEchoed);
    void SetOpen(bool isOpen);
    void ShowCapsLock();
    void Answer();
    void OnResponse(int response);
    void OnDestroyed();

    SHandlers m_handlers;
    SDialogBody m_body; // its dialog is null once the window is destroyed; no widget may be touched then
    GtkGrid* m_fields = nullptr;
    GtkLabel* m_prompt = nullptr;
    GtkEntry* m_entry = nullptr;
    GtkWidget* m_users = nullptr;
    GtkWidget* m_allow = nullptr;
    GtkWidget* m_noteRow = nullptr;
    GtkLabel* m_note = nullptr;
    GtkWidget* m_capsLockRow = nullptr;
    gulong m_keymapHandler = 0;
};

} // namespace Launcher
