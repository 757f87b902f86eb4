#pragma once

// Two options of which at most one is on. Neither may be, as settings files can say so, which a
// toolkit's group of options does not know: a third one that is never shown stands for it.

class wxRadioButton;
class wxWindow;

namespace ui {

struct OptionPair {
  struct Option {
    const char* name;
    const char* text;
  };

  OptionPair() = default;
  OptionPair(wxWindow* parent, Option firstOption, Option secondOption);

  /// Where both are to be on, the second one is.
  void Set(bool firstIsOn, bool secondIsOn);

  wxRadioButton* first = nullptr;
  wxRadioButton* second = nullptr;

 private:
  wxRadioButton* neither_ = nullptr;
};

}  // namespace ui
