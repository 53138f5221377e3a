#include "launcher/linux/dialog/DialogBody.h"

#include "launcher/linux/dialog/DisplayWatch.h"

namespace Launcher {

namespace {

constexpr int kMargin = 18;     // pixels, as all below; around everything
constexpr int kSpacing = 18;    // between picture and texts
constexpr int kLineSpacing = 8; // between texts
constexpr int kButtonSpacing = 8;
constexpr int kButtonMargin = 12; // above the buttons
constexpr int kButtonWidth = 88;
constexpr int kTextWidth = 52; // characters

std::string ValidText(std::string const& text) {
    char* const valid = g_utf8_make_valid(text.c_str(), static_cast<gssize>(text.size()));
    std::string result(valid);
    g_free(valid);
    return result;
}

GtkWidget* MakeHeading(std::string const& text) {
    GtkWidget* const label = MakeTextLabel(text);
    PangoAttrList* const attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
    pango_attr_list_insert(attributes, pango_attr_scale_new(PANGO_SCALE_LARGE));
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
    return label;
}

// Pixels for each pixel of the layout, before there is a window to ask.
int DisplayScale() {
    GdkMonitor* const monitor = gdk_display_get_monitor(gdk_display_get_default(), 0);
    return monitor ? gdk_monitor_get_scale_factor(monitor) : 1;
}

} // namespace

GtkWidget* MakeTextLabel(std::string const& text) {
    GtkWidget* const label = gtk_label_new(ValidText(text).c_str());
    gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_line_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
    gtk_label_set_max_width_chars(GTK_LABEL(label), kTextWidth);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_widget_set_halign(label, GTK_ALIGN_START);
    return label;
}

void SetLabelText(GtkLabel* label, std::string const& text) {
    gtk_label_set_text(label, ValidText(text).c_str());
}

GtkWidget* MakeNoteRow(char const* icon, GtkLabel** label) {
    GtkWidget* const row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, kButtonSpacing);
    GtkWidget* const text = MakeTextLabel("");
    gtk_box_pack_start(GTK_BOX(row), gtk_image_new_from_icon_name(icon, GTK_ICON_SIZE_MENU), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(row), text, FALSE, FALSE, 0);
    gtk_widget_show_all(row);
    gtk_widget_hide(row);
    gtk_widget_set_no_show_all(row, TRUE);
    atk_object_set_role(gtk_widget_get_accessible(row), ATK_ROLE_NOTIFICATION);
    *label = GTK_LABEL(text);
    return row;
}

GtkWidget* MakePicture(std::string const& path, int size, char const* fallbackIcon) {
    int const scale = DisplayScale();
    GdkPixbuf* const pixels = path.empty() ? nullptr
                                           : gdk_pixbuf_new_from_file_at_scale(path.c_str(), size * scale,
                                                                               size * scale, TRUE, nullptr);
    if (pixels) {
        cairo_surface_t* const surface = gdk_cairo_surface_create_from_pixbuf(pixels, scale, nullptr);
        GtkWidget* const picture = gtk_image_new_from_surface(surface);
        cairo_surface_destroy(surface);
        g_object_unref(pixels);
        return picture;
    }
    GtkWidget* const picture = gtk_image_new_from_icon_name(fallbackIcon, GTK_ICON_SIZE_DIALOG);
    gtk_image_set_pixel_size(GTK_IMAGE(picture), size);
    return picture;
}

SDialogBody MakeDialogBody(GtkWidget* picture, std::string const& heading, std::string const& text) {
    GtkWidget* const dialog = gtk_dialog_new();
    gtk_window_set_title(GTK_WINDOW(dialog), "Quillmark");
    gtk_window_set_resizable(GTK_WINDOW(dialog), FALSE);
    gtk_window_set_position(GTK_WINDOW(dialog), GTK_WIN_POS_CENTER);
    gtk_window_set_skip_taskbar_hint(GTK_WINDOW(dialog), FALSE);
    gtk_window_set_keep_above(GTK_WINDOW(dialog), TRUE);

    GtkWidget* const row = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, kSpacing);
    gtk_container_set_border_width(GTK_CONTAINER(row), kMargin);
    gtk_widget_set_valign(picture, GTK_ALIGN_START);
    atk_object_set_role(gtk_widget_get_accessible(picture), ATK_ROLE_IMAGE);
    gtk_box_pack_start(GTK_BOX(row), picture, FALSE, FALSE, 0);

    GtkWidget* const column = gtk_box_new(GTK_ORIENTATION_VERTICAL, kLineSpacing);
    gtk_box_pack_start(GTK_BOX(column), MakeHeading(heading), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(column), MakeTextLabel(text), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(row), column, TRUE, TRUE, 0);

    GtkWidget* const buttons = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, kButtonSpacing);
    gtk_box_set_homogeneous(GTK_BOX(buttons), TRUE);
    gtk_widget_set_halign(buttons, GTK_ALIGN_END);
    gtk_widget_set_margin_top(buttons, kButtonMargin);
    gtk_box_pack_end(GTK_BOX(column), buttons, FALSE, FALSE, 0);

    gtk_container_set_border_width(GTK_CONTAINER(dialog), 0);
    gtk_container_add(GTK_CONTAINER(gtk_dialog_get_content_area(GTK_DIALOG(dialog))), row);
    return {GTK_DIALOG(dialog), GTK_BOX(column), GTK_BOX(buttons)};
}

GtkWidget* AddButton(SDialogBody const& body, std::string const& label, int response, bool isDefault) {
    GtkWidget* const button = gtk_button_new_with_mnemonic(ValidText(label).c_str());
    gtk_widget_set_size_request(button, kButtonWidth, -1);
    gtk_box_pack_start(body.buttons, button, TRUE, TRUE, 0);
    g_object_set_data(G_OBJECT(button), "response", GINT_TO_POINTER(response));
    g_signal_connect(button, "clicked", G_CALLBACK(+[](GtkWidget* clicked, gpointer dialog) {
                         gtk_dialog_response(GTK_DIALOG(dialog), GPOINTER_TO_INT(g_object_get_data(
                                                                     G_OBJECT(clicked), "response")));
                     }),
                     body.dialog);
    if (isDefault) {
        gtk_widget_set_can_default(button, TRUE);
        gtk_window_set_default(GTK_WINDOW(body.dialog), button);
    }
    return button;
}

void ShowDialog(SDialogBody const& body) {
    DisplayWatch const watch;
    gtk_widget_show_all(GTK_WIDGET(body.dialog));
    gtk_window_present(GTK_WINDOW(body.dialog));
    gdk_display_sync(gtk_widget_get_display(GTK_WIDGET(body.dialog)));
}

std::string ReadableName(std::string const& name) {
    std::string const valid = ValidText(name);
    std::string result;
    char const* next = nullptr;
    for (char const* at = valid.c_str(); *at != '\0'; at = next) {
        next = g_utf8_next_char(at);
        gunichar const character = g_utf8_get_char(at);
        GUnicodeType const type = g_unichar_type(character);
        bool const isPlain = type != G_UNICODE_CONTROL && type != G_UNICODE_FORMAT &&
                             type != G_UNICODE_LINE_SEPARATOR && type != G_UNICODE_PARAGRAPH_SEPARATOR;
        result += isPlain ? std::string(at, next) : "\uFFFD";
    }
    return result;
}

} // namespace Launcher
