#include "ui/dialogs/port_field.h"

#include <wx/textctrl.h>

#include <algorithm>
#include <string>

#include "core/port_remarks.h"
#include "text/conversions.h"
#include "ui/controls/toolkit_text.h"

namespace ui {

void SelectPort(std::initializer_list<wxTextCtrl*> fields, int wrong) {
  wxTextCtrl* found = nullptr;
  for (wxTextCtrl* field : fields) {
    if (text::ToInt16(Typed(field->GetValue())) == wrong) found = field;
  }
  const auto isUnusable = [](wxTextCtrl* field) {
    return core::PortComplaint(Typed(field->GetValue()), std::nullopt).has_value();
  };
  const auto* unusable = std::find_if(fields.begin(), fields.end(), isUnusable);
  if (found == nullptr) found = unusable == fields.end() ? *fields.begin() : *unusable;
  found->SetFocus();
  found->SelectAll();
}

}  // namespace ui
