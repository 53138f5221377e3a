#include "launcher/linux/dialog/PasswordDialog.h"

namespace Launcher {

namespace {

constexpr int kIconSize = 64; // pixels

void MakeSmallAndDim(GtkWidget* label) {
    PangoAttrList* const attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_scale_new(PANGO_SCALE_SMALL));
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
    gtk_style_context_add_class(gtk_widget_get_style_context(label), GTK_STYLE_CLASS_DIM_LABEL);
}

void SetText(GtkLabel* label, std::string const& text) {
    char* const valid = g_utf8_make_valid(text.c_str(), -1);
    gtk_label_set_text(label, valid);
    g_free(valid);
}

} // namespace

PasswordDialog::PasswordDialog(std::string const& iconPath, std::string const& detail, SHandlers handlers)
    : m_handlers(std::move(handlers)),
      m_body(MakeDialogBody(MakePicture(iconPath, kIconSize, "dialog-password"),
                            "Administrator rights are needed",
                            "Quillmark is about to start a program as administrator. "
                            "Enter an administrator’s password to allow it.")),
      m_prompt(GTK_LABEL(MakeTextLabel("Password:"))), m_entry(GTK_ENTRY(gtk_entry_new())),
      m_note(GTK_LABEL(MakeTextLabel(""))) {
    if (!detail.empty()) {
        GtkWidget* const label = MakeTextLabel(detail);
        MakeSmallAndDim(label);
        gtk_box_pack_start(m_body.column, label, FALSE, FALSE, 0);
    }
    gtk_entry_set_visibility(m_entry, FALSE);
    gtk_entry_set_input_purpose(m_entry, GTK_INPUT_PURPOSE_PASSWORD);
    gtk_entry_set_max_length(m_entry, SecretText::kMaxLength / 4); // characters of up to four bytes
    gtk_entry_set_activates_default(m_entry, TRUE);
    gtk_label_set_mnemonic_widget(m_prompt, GTK_WIDGET(m_entry));
    for (GtkWidget* const widget : {GTK_WIDGET(m_prompt), GTK_WIDGET(m_entry), GTK_WIDGET(m_note)}) {
        gtk_box_pack_start(m_body.column, widget, FALSE, FALSE, 0);
    }
    gtk_widget_set_no_show_all(GTK_WIDGET(m_note), TRUE);

    gtk_dialog_add_button(m_body.dialog, "_Cancel", GTK_RESPONSE_CANCEL);
    GtkWidget* const allow = gtk_dialog_add_button(m_body.dialog, "_Allow", GTK_RESPONSE_OK);
    gtk_style_context_add_class(gtk_widget_get_style_context(allow), GTK_STYLE_CLASS_SUGGESTED_ACTION);
    gtk_dialog_set_default_response(m_body.dialog, GTK_RESPONSE_OK);
    SetOpen(false);
    g_signal_connect(m_body.dialog, "response", G_CALLBACK(+[](GtkDialog*, int response, gpointer self) {
                         static_cast<PasswordDialog*>(self)->OnResponse(response);
                     }),
                     this);
    // A closed window must not take its widgets along: this object destroys them.
    g_signal_connect(m_body.dialog, "delete-event", G_CALLBACK(gtk_true), nullptr);
}

PasswordDialog::~PasswordDialog() {
    gtk_entry_set_text(m_entry, ""); // wipes what was typed
    gtk_widget_destroy(GTK_WIDGET(m_body.dialog));
}

void PasswordDialog::SetUsers(std::vector<std::string> const& names, std::size_t selected) {
    if (names.size() < 2 || m_users) {
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
    gtk_box_pack_start(m_body.column, m_users, FALSE, FALSE, 0);
    gtk_box_reorder_child(m_body.column, m_users, 2); // between the text and the prompt
}

void PasswordDialog::AskFor(std::string const& prompt, bool isEchoed) {
    SetText(m_prompt, prompt);
    gtk_entry_set_visibility(m_entry, isEchoed);
    SetOpen(true);
    gtk_widget_show_all(GTK_WIDGET(m_body.dialog));
    gtk_window_present(GTK_WINDOW(m_body.dialog));
    gtk_widget_grab_focus(GTK_WIDGET(m_entry));
}

void PasswordDialog::SetNote(std::string const& text) {
    SetText(m_note, text);
    gtk_widget_set_visible(GTK_WIDGET(m_note), !text.empty());
}

void PasswordDialog::Hide() {
    gtk_widget_hide(GTK_WIDGET(m_body.dialog));
}

void PasswordDialog::SetOpen(bool isOpen) {
    gtk_widget_set_sensitive(GTK_WIDGET(m_entry), isOpen);
    gtk_dialog_set_response_sensitive(m_body.dialog, GTK_RESPONSE_OK, isOpen);
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

} // namespace Launcher
