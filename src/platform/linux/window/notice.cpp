#include "platform/linux/window/notice.h"

#include "platform/linux/x11/windows/host_window.h"

#include <gtk/gtk.h>

namespace platform {

void showNotice(const std::string& heading, const std::string& text) {
    // GTK owns it until it is destroyed.
    GtkWidget* dialog = gtk_message_dialog_new(nullptr, GtkDialogFlags{}, GTK_MESSAGE_INFO, GTK_BUTTONS_CLOSE,
                                               "%s", heading.c_str());
    gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(dialog), "%s", text.c_str());
    gtk_window_set_title(GTK_WINDOW(dialog), "Quillmark");
    gtk_window_set_position(GTK_WINDOW(dialog), GTK_WIN_POS_CENTER);
    g_signal_connect(dialog, "response", G_CALLBACK(gtk_widget_destroy), nullptr);
    gtk_widget_realize(dialog);
    const auto time = x11::prepareToPresent(gtk_widget_get_window(dialog), true);
    gtk_window_present_with_time(GTK_WINDOW(dialog), time);
}

} // namespace platform
