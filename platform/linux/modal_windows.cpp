#include "platform/modal_windows.h"

#include <gtk/gtk.h>

namespace platform {

void DismissModalWindow() {
  GtkWidget* holder = gtk_grab_get_current();
  if (holder == nullptr) return;
  if (GTK_IS_MENU_SHELL(holder)) {
    gtk_menu_shell_cancel(GTK_MENU_SHELL(holder));
    return;
  }
  GtkWidget* window = gtk_widget_get_toplevel(holder);
  if (GTK_IS_DIALOG(window)) gtk_dialog_response(GTK_DIALOG(window), GTK_RESPONSE_CANCEL);
}

}  // namespace platform
