#pragma once

// What all windows share in their looks: distances, rows of fields, and the row of buttons at the
// bottom. Distances are given in pixels of a screen at 100 % and grow with the screen's scale.

#include <wx/sizer.h>
#include <wx/window.h>

class wxButton;
class wxCheckBox;
class wxDialog;
class wxTextCtrl;

namespace ui {

inline constexpr int kEdge = 12;     // between a window's border and what is in it, between groups
inline constexpr int kGap = 8;       // between a control and the next one
inline constexpr int kTightGap = 4;  // between the lines of one thing

/// Gives a control the name by which it is known, and returns it.
template <class Control>
Control* Named(Control* control, const char* name) {
  control->SetName(name);
  return control;
}

/// A button with `text`, whose mnemonic is marked by "&".
wxButton* MakeButton(wxWindow* parent, const char* name, const char* text, int id = wxID_ANY);

wxCheckBox* MakeCheckBox(wxWindow* parent, const char* name, const char* text);

/// Rows of a label, a text field that takes the width, and, where there is one, a button.
class FieldRows {
 public:
  explicit FieldRows(wxWindow* parent);

  /// `style`: the toolkit's style of the text field.
  wxTextCtrl* Add(const char* name, const char* label, long style = 0);
  wxTextCtrl* AddWithButton(const char* name, const char* label, wxButton* button);

  wxSizer* Sizer() const { return grid_; }

 private:
  wxTextCtrl* AddField(const char* name, const char* label, long style);

  wxWindow* parent_;
  wxFlexGridSizer* grid_;
};

/// A group with a heading. Its controls are children of GetStaticBox().
wxStaticBoxSizer* MakeGroup(wxWindow* parent, const char* heading);

/// One below the other, with the usual gap.
void AddBelow(wxSizer* column, wxWindow* control);
void AddBelow(wxSizer* column, wxSizer* part, int proportion = 0);

/// Puts `content` and below it the two buttons into the dialog, makes `ok` the one that Enter
/// presses and `cancel` the one of Escape, and gives the dialog its least size.
void Finish(wxDialog& dialog, wxSizer* content, wxButton* ok, wxButton* cancel);

}  // namespace ui
