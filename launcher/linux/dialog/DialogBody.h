#pragma once

#include <gtk/gtk.h>
#include <string>

namespace Launcher {

/// A dialog window that all dialogs of the launcher look like: picture on the left, a bold heading over a text on
/// the right. Buttons are added by the caller; Escape closes.
///
/// Ownership: the widgets belong to the window, the window to the caller (gtk_widget_destroy).
/// Threads: main thread.
struct SDialogBody {
    GtkDialog* dialog;
    GtkBox* column; ///< below the text; for what else the dialog shows
};

/// `picture` is adopted. Texts that are not UTF-8 are repaired, and never taken for markup.
SDialogBody MakeDialogBody(GtkWidget* picture, std::string const& heading, std::string const& text);

/// A label with wrapped text, aligned to the left.
GtkWidget* MakeTextLabel(std::string const& text);

/// The picture at `path` fitted into a square of `size` pixels, or the named icon when it cannot be read.
GtkWidget* MakePicture(std::string const& path, int size, char const* fallbackIcon);

} // namespace Launcher
