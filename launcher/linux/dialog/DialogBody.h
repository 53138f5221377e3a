#pragma once

#include <gtk/gtk.h>
#include <string>

namespace Launcher {

/// The window of all dialogs of the launcher: picture on the left; on the right a bold heading over a text, what
/// else the dialog shows, and the buttons, which end where the texts end. Escape closes.
///
/// Ownership: the widgets belong to the window, the window to the caller (gtk_widget_destroy).
/// Threads: main thread.
struct SDialogBody {
    GtkDialog* dialog;
    GtkBox* column;  ///< below the text; for what else the dialog shows
    GtkBox* buttons; ///< see `AddButton`
};

/// `picture` is adopted. Texts that are not UTF-8 are repaired, and never taken for markup.
SDialogBody MakeDialogBody(GtkWidget* picture, std::string const& heading, std::string const& text);

/// A button with the response; `label` has its mnemonic after '_'. The last one added that `isDefault` answers to
/// Return.
GtkWidget* AddButton(SDialogBody const& body, std::string const& label, int response, bool isDefault);

/// Shows the window and waits until the display has taken it; see `DisplayWatch`.
void ShowDialog(SDialogBody const& body);

/// A label with wrapped text, aligned to the left.
GtkWidget* MakeTextLabel(std::string const& text);

/// Changes the text of such a label.
void SetLabelText(GtkLabel* label, std::string const& text);

/// A row of an icon and a text, for what the user should notice; hidden until shown. `*label` gets its text's label.
GtkWidget* MakeNoteRow(char const* icon, GtkLabel** label);

/// The picture at `path` fitted into a square of `size` pixels, as sharp as the display shows it, or the named icon
/// when it cannot be read.
GtkWidget* MakePicture(std::string const& path, int size, char const* fallbackIcon);

/// The text without characters that break lines or turn the direction of writing: for names of files, which may
/// hold anything.
std::string ReadableName(std::string const& name);

} // namespace Launcher
