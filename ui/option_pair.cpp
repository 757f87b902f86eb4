#include "ui/option_pair.h"

#include <wx/radiobut.h>

#include "ui/layout.h"
#include "ui/toolkit_text.h"

namespace ui {
namespace {

wxRadioButton* MakeOption(wxWindow* parent, const OptionPair::Option& option, long style = 0) {
  return Named(new wxRadioButton(parent, wxID_ANY, Shown(option.text), wxDefaultPosition,
                                 wxDefaultSize, style),
               option.name);
}

}  // namespace

OptionPair::OptionPair(wxWindow* parent, Option firstOption, Option secondOption)
    : first(MakeOption(parent, firstOption, wxRB_GROUP)),
      second(MakeOption(parent, secondOption)),
      neither_(MakeOption(parent, {"", ""})) {
  neither_->Hide();
}

void OptionPair::Set(bool firstIsOn, bool secondIsOn) {
  wxRadioButton* on = secondIsOn ? second : firstIsOn ? first : neither_;
  on->SetValue(true);
}

}  // namespace ui
