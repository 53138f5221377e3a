#include "launcher/linux/dialog/DialogBody.h"

namespace Launcher {

namespace {

constexpr int kMargin = 12;     // pixels, as all below; around buttons and all
constexpr int kInnerMargin = 6; // around picture and texts
constexpr int kSpacing = 18;
constexpr int kLineSpacing = 8;
constexpr int kTextWidth = 48; // characters

GtkWidget* MakeHeading(std::string const& text) {
    GtkWidget* const label = MakeTextLabel(text);
    PangoAttrList* const attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
    pango_attr_list_insert(attributes, pango_attr_scale_new(PANGO_SCALE_LARGE));
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
    return label;
}

} // namespace

GtkWidget* MakeTextLabel(std::string const& text) {
    char* const valid = g_utf8_make_valid(text.c_str(), -1);
    GtkWidget* const label = gtk_label_new(valid);
    g_free(valid);
    gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_line_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
    gtk_label_set_max_width_chars(GTK_LABEL(label), kTextWidth);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_widget_set_halign(label, GTK_ALIGN_START);
    return label;
}

GtkWidget* MakePicture(std::string const& path, int size, char const* fallbackIcon) {
    GdkPixbuf* const pixels =
        path.empty() ? nullptr : gdk_pixbuf_new_from_file_at_scale(path.c_str(), size, size, TRUE, nullptr);
    if (pixels) {
        GtkWidget* const picture = gtk_image_new_from_pixbuf(pixels);
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
    gtk_container_set_border_width(GTK_CONTAINER(dialog), kMargin);
    gtk_container_set_border_width(GTK_CONTAINER(row), kInnerMargin);
    gtk_widget_set_margin_bottom(row, kMargin);
    gtk_widget_set_valign(picture, GTK_ALIGN_START);
    gtk_box_pack_start(GTK_BOX(row), picture, FALSE, FALSE, 0);

    GtkWidget* const column = gtk_box_new(GTK_ORIENTATION_VERTICAL, kLineSpacing);
    gtk_box_pack_start(GTK_BOX(column), MakeHeading(heading), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(column), MakeTextLabel(text), FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(row), column, TRUE, TRUE, 0);

    gtk_container_add(GTK_CONTAINER(gtk_dialog_get_content_area(GTK_DIALOG(dialog))), row);
    return {GTK_DIALOG(dialog), GTK_BOX(column)};
}

} // namespace Launcher
