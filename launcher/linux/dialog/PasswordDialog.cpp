#include "launcher/linux/dialog/PasswordDialog.h"

#include "launcher/linux/BundlePlaces.h"
#include "launcher/linux/Messages.h"

#include <filesystem>

namespace Launcher {

namespace {

constexpr int kIconSize = 64;    // pixels
constexpr int kFieldSpacing = 8; // pixels
constexpr int kFieldsMargin = 6; // pixels, above the fields
constexpr int kEntryWidth = 24;  // characters
constexpr int kUsersRow = 0;     // of the grid of fields
constexpr int kPasswordRow = 1;

GtkWidget* MakeDetail(std::string const& text) {
    GtkWidget* const label = MakeTextLabel(text);
    PangoAttrList* const attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_scale_new(PANGO_SCALE_SMALL));
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
    return label;
}

GtkWidget* MakeFieldLabel(std::string const& labelWithMnemonic, GtkWidget* field) {
    GtkWidget* const label = gtk_label_new_with_mnemonic(labelWithMnemonic.c_str());
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_mnemonic_widget(GTK_LABEL(label), field);
    return label;
}

// Text for a label with mnemonics in which no '_' marks one.
std::string WithoutMnemonic(std::string const& text) {
    std::string result;
    for (char const c : text) {
        result += c == '_' ? "__" : std::string(1, c);
    }
    return result;
}

// Makes the button stand out in the theme's own colour, a little darker: the usual one leaves its text a contrast
// below 4.5. An inner shadow does that whatever colour the theme has.
void Emphasise(GtkWidget* button) {
    GtkStyleContext* const style = gtk_widget_get_style_context(button);
    gtk_style_context_add_class(style, GTK_STYLE_CLASS_SUGGESTED_ACTION);
    GtkCssProvider* const darker = gtk_css_provider_new();
    gtk_css_provider_load_from_data(darker, "button { box-shadow: inset 0 0 0 100px alpha(black, 0.12); }",
                                    -1, nullptr);
    gtk_style_context_add_provider(style, GTK_STYLE_PROVIDER(darker),
                                   GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(darker);
}

GdkKeymap* Keymap() {
    return gdk_keymap_get_for_display(gdk_display_get_default());
}

} // namespace

SPasswordReason ReasonToStart(std::string const& program) {
    SOwnBundle const bundle = OwnBundle();
    std::string const name = ReadableName(bundle.name);
    std::string const folder = ReadableName(bundle.folder);
    if (program.empty()) {
        return {Translated("\"{bundle}\" in the folder \"{folder}\" wants to start a program that may change "
                           "anything on "
                           "this computer. An administrator's password allows it.",
                           {{"bundle", name}, {"folder", folder}}),
                ReadableName(bundle.path)};
    }
    return {Translated(
                "\"{bundle}\" in the folder \"{folder}\" wants to start \"{program}\", which may then change "
                "anything on this computer. An administrator's password allows it.",
                {{"bundle", name},
                 {"folder", folder},
                 {"program", ReadableName(std::filesystem::path(program).filename().string())}}),
            ReadableName(program)};
}

PasswordDialog::PasswordDialog(std::string const& iconPath, SPasswordReason const& reason, SHandlers handlers)
    : m_handlers(std::move(handlers)),
      m_body(MakeDialogBody(MakePicture(iconPath, kIconSize, "dialog-password"),
                            Translated("Administrator rights are needed"), reason.text)) {
    if (!reason.detail.empty()) {
        gtk_box_pack_start(m_body.column, MakeDetail(reason.detail), FALSE, FALSE, 0);
    }
    AddFields();
    AddButtons();
    SetOpen(false);
    g_signal_connect(m_body.dialog, "response", G_CALLBACK(+[](GtkDialog*, int response, gpointer self) {
                         static_cast<PasswordDialog*>(self)->OnResponse(response);
                     }),
                     this);
    // A closed window must not take its widgets along: this object destroys them.
    g_signal_connect(m_body.dialog, "delete-event", G_CALLBACK(gtk_true), nullptr);
    g_signal_connect(m_body.dialog, "destroy", G_CALLBACK(+[](GtkWidget*, gpointer self) {
                         static_cast<PasswordDialog*>(self)->OnDestroyed();
                     }),
                     this);
    m_keymapHandler = g_signal_connect(Keymap(), "state-changed", G_CALLBACK(+[](GdkKeymap*, gpointer self) {
                                           static_cast<PasswordDialog*>(self)->ShowCapsLock();
                                       }),
                                       this);
}

PasswordDialog::~PasswordDialog() {
    g_signal_handler_disconnect(Keymap(), m_keymapHandler);
    if (m_body.dialog) {
        g_signal_handlers_disconnect_by_data(m_body.dialog, this);
        gtk_entry_set_text(m_entry, ""); // wipes what was typed
        gtk_widget_destroy(GTK_WIDGET(m_body.dialog));
    }
}

void PasswordDialog::AddFields() {
    m_entry = GTK_ENTRY(gtk_entry_new());
    gtk_entry_set_visibility(m_entry, FALSE);
    gtk_entry_set_input_purpose(m_entry, GTK_INPUT_PURPOSE_PASSWORD);
    gtk_entry_set_max_length(m_entry, SecretText::kMaxLength / 4); // characters of up to four bytes
    gtk_entry_set_width_chars(m_entry, kEntryWidth);
    gtk_entry_set_activates_default(m_entry, TRUE);
    gtk_widget_set_hexpand(GTK_WIDGET(m_entry), TRUE);
    m_prompt = GTK_LABEL(MakeFieldLabel(Translated("_Password:"), GTK_WIDGET(m_entry)));

    m_fields = GTK_GRID(gtk_grid_new());
    gtk_grid_set_row_spacing(m_fields, kFieldSpacing);
    gtk_grid_set_column_spacing(m_fields, kFieldSpacing);
    gtk_widget_set_margin_top(GTK_WIDGET(m_fields), kFieldsMargin);
    gtk_grid_attach(m_fields, GTK_WIDGET(m_prompt), 0, kPasswordRow, 1, 1);
    gtk_grid_attach(m_fields, GTK_WIDGET(m_entry), 1, kPasswordRow, 1, 1);
    gtk_box_pack_start(m_body.column, GTK_WIDGET(m_fields), FALSE, FALSE, 0);

    GtkLabel* capsLock = nullptr;
    m_capsLockRow = MakeNoteRow("dialog-information", &capsLock);
    SetLabelText(capsLock, Translated("Caps Lock is on."));
    m_noteRow = MakeNoteRow("dialog-warning", &m_note);
    gtk_box_pack_start(m_body.column, m_capsLockRow, FALSE, FALSE, 0);
    gtk_box_pack_start(m_body.column, m_noteRow, FALSE, FALSE, 0);
}

void PasswordDialog::AddButtons() {
    AddButton(m_body, Translated("_Cancel"), GTK_RESPONSE_CANCEL, false);
    m_allow = AddButton(m_body, Translated("_Allow"), GTK_RESPONSE_OK, true);
    Emphasise(m_allow);
}

void PasswordDialog::SetUsers(std::vector<std::string> const& names, std::size_t selected) {
    if (names.size() < 2 || m_users || !m_body.dialog) {
        return;
    }
    m_users = gtk_combo_box_text_new();
    for (std::string const& name : names) {
        gtk_combo_box_text_append_text(GTK_COMBO_BOX_TEXT(m_users), name.c_str());
    }
    gtk_combo_box_set_active(GTK_COMBO_BOX(m_users), static_cast<int>(selected));
    g_signal_connect(m_users, "changed", G_CALLBACK(+[](GtkComboBox* box, gpointer self) {
                         int const index = gtk_combo_box_get_active(box);
                         if (index >= 0) {
                             static_cast<PasswordDialog*>(self)->m_handlers.userChosen(
                                 static_cast<std::size_t>(index));
                         }
                     }),
                     this);
    gtk_grid_attach(m_fields, MakeFieldLabel(Translated("Ad_ministrator:"), m_users), 0, kUsersRow, 1, 1);
    gtk_grid_attach(m_fields, m_users, 1, kUsersRow, 1, 1);
}

void PasswordDialog::AskForPasswordOf(std::string const& user) {
    bool const isNamed = m_users || user.empty(); // the chooser shows the name
    ShowPrompt(isNamed ? Translated("_Password:")
                       : Translated("_Password of {user}:", {{"user", WithoutMnemonic(user)}}),
               false);
}

void PasswordDialog::AskFor(std::string const& prompt, bool isEchoed) {
    ShowPrompt(WithoutMnemonic(prompt), isEchoed);
}

void PasswordDialog::ShowPrompt(std::string const& labelWithMnemonic, bool isEchoed) {
    if (!m_body.dialog) {
        return;
    }
    gtk_label_set_text_with_mnemonic(m_prompt, labelWithMnemonic.c_str());
    gtk_entry_set_visibility(m_entry, isEchoed);
    SetOpen(true);
    ShowCapsLock();
    ShowDialog(m_body);
    gtk_widget_grab_focus(GTK_WIDGET(m_entry));
}

void PasswordDialog::SetNote(std::string const& text) {
    if (m_body.dialog) {
        SetLabelText(m_note, text);
        gtk_widget_set_visible(m_noteRow, !text.empty());
    }
}

void PasswordDialog::ShowCapsLock() {
    if (m_body.dialog) {
        gtk_widget_set_visible(m_capsLockRow, gdk_keymap_get_caps_lock_state(Keymap()));
    }
}

void PasswordDialog::Hide() {
    if (m_body.dialog) {
        gtk_widget_hide(GTK_WIDGET(m_body.dialog));
    }
}

void PasswordDialog::SetOpen(bool isOpen) {
    gtk_widget_set_sensitive(GTK_WIDGET(m_entry), isOpen);
    gtk_widget_set_sensitive(m_allow, isOpen);
}

void PasswordDialog::Answer() {
    SecretText password;
    password.Set(gtk_entry_get_text(m_entry));
    gtk_entry_set_text(m_entry, "");
    SetOpen(false);
    m_handlers.answered(password);
}

void PasswordDialog::OnResponse(int response) {
    if (response != GTK_RESPONSE_OK) {
        m_handlers.cancelled();
    } else if (gtk_widget_get_sensitive(GTK_WIDGET(m_entry))) {
        Answer();
    }
}

void PasswordDialog::OnDestroyed() {
    m_body.dialog = nullptr;
    m_handlers.cancelled();
}

} // namespace Launcher
