#include "platform/control_looks.h"

#include <gtk/gtk.h>

namespace platform {

void ShowAsMainButton(void* button, bool isMain) {
  GtkStyleContext* style = gtk_widget_get_style_context(static_cast<GtkWidget*>(button));
  const auto change = isMain ? gtk_style_context_add_class : gtk_style_context_remove_class;
  change(style, GTK_STYLE_CLASS_SUGGESTED_ACTION);
}

bool MakeSelectable(void* label) {
  gtk_label_set_selectable(static_cast<GtkLabel*>(label), TRUE);
  // Copied from by the label's own menu.
  gtk_widget_set_can_focus(static_cast<GtkWidget*>(label), FALSE);
  return true;
}

void SetLinkColours(const std::string& enabled, const std::string& disabled) {
  const std::string rules = "button.link label { color: " + enabled +
                            "; } button.link:disabled label { color: " + disabled +
                            "; text-decoration: none; }";
  GtkCssProvider* provider = gtk_css_provider_new();
  gtk_css_provider_load_from_data(provider, rules.c_str(), -1, nullptr);
  gtk_style_context_add_provider_for_screen(gdk_screen_get_default(), GTK_STYLE_PROVIDER(provider),
                                            GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  g_object_unref(provider);
}

void SetRoomAroundCaptions(void*, int, int) {}

}  // namespace platform
