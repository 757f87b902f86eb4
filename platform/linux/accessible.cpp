#include "platform/accessible.h"

#include <gtk/gtk.h>

#include <string>

namespace platform {
namespace {

AtkRole RoleOf(AccessibleRole role) {
  switch (role) {
    case AccessibleRole::kButton:
      return ATK_ROLE_PUSH_BUTTON;
    case AccessibleRole::kLink:
      return ATK_ROLE_LINK;
    case AccessibleRole::kPicture:
      return ATK_ROLE_IMAGE;
    case AccessibleRole::kStatusBar:
      return ATK_ROLE_STATUSBAR;
    case AccessibleRole::kTable:
      return ATK_ROLE_TABLE;
    case AccessibleRole::kTree:
      return ATK_ROLE_TREE;
    case AccessibleRole::kItsOwn:
      break;
  }
  return ATK_ROLE_INVALID;
}

void Describe(GtkWidget* widget, const AccessibleLooks& looks) {
  AtkObject* accessible = gtk_widget_get_accessible(widget);
  atk_object_set_name(accessible, std::string(looks.name).c_str());
  atk_object_set_description(accessible, std::string(looks.description).c_str());
  const AtkRole role = RoleOf(looks.role);
  if (role != ATK_ROLE_INVALID) atk_object_set_role(accessible, role);
}

}  // namespace

void DescribeControl(void* control, const AccessibleLooks& looks) {
  auto* widget = static_cast<GtkWidget*>(control);
  // A scrolled control is wrapped in a frame; the inner widget has the focus.
  GtkWidget* inner = GTK_IS_SCROLLED_WINDOW(widget) ? gtk_bin_get_child(GTK_BIN(widget)) : nullptr;
  Describe(inner != nullptr ? inner : widget, looks);
}

}  // namespace platform
