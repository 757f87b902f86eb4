#pragma once

// What all windows share in their looks: distances, rows of fields, groups, and the row of buttons
// at the bottom. Distances are given in pixels of a screen at 100 % and grow with its scale.
//
// Texts of controls mark their mnemonic with "&".

#include <wx/gbsizer.h>
#include <wx/sizer.h>
#include <wx/window.h>

#include <initializer_list>

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

wxButton* MakeButton(wxWindow* parent, const char* name, const char* text, int id = wxID_ANY);
wxCheckBox* MakeCheckBox(wxWindow* parent, const char* name, const char* text);

/// Things one below the other, each as wide as the widest.
class Column {
 public:
  explicit Column(wxWindow* window, int gap = kGap);

  /// A part with a `proportion` above 0 takes the height that is left.
  void Add(wxWindow* part, int proportion = 0);
  void Add(wxSizer* part, int proportion = 0);

  /// To be added to what it stands in.
  wxSizer* Sizer() const { return sizer_; }

 private:
  wxSizerFlags Next(int proportion);

  wxBoxSizer* sizer_;
  int gap_;  // in the window's own pixels
};

/// A column in a frame with a heading.
class Group {
 public:
  Group(wxWindow* parent, const char* heading);

  /// The parent of the controls in it.
  wxWindow* Parent() const;
  Column& Content() { return content_; }
  wxSizer* Sizer() const { return box_; }

 private:
  wxStaticBoxSizer* box_;
  Column content_;
};

/// Rows of a label, a text field that takes the width, and, where there is one, a button.
class FieldRows {
 public:
  explicit FieldRows(wxWindow* parent);

  /// `style`: the toolkit's style of the text field.
  wxTextCtrl* Add(const char* name, const char* label, long style = 0);

  /// The same with a button behind the field, which is made in `button`.
  wxTextCtrl* AddWithButton(const char* name, const char* label, const char* buttonName,
                            const char* buttonText, wxButton*& button);

  wxSizer* Sizer() const { return grid_; }

 private:
  wxTextCtrl* AddField(const char* name, const char* label, long style, int columns);

  wxWindow* parent_;
  wxGridBagSizer* grid_;
  int row_ = -1;
};

/// Controls side by side.
wxSizer* MakeRow(wxWindow* window, std::initializer_list<wxWindow*> controls);

/// Shows one control in the place of another, and hands the focus over.
void ShowInstead(wxWindow& of, wxWindow& shown);

/// A page of a notebook: `content` with the usual distance to its border. Returns `page`.
wxWindow* WithMargin(wxWindow* page, wxSizer* content);

/// The same around one window, a child of the page.
wxWindow* WithMargin(wxWindow* page, wxWindow* content);

/// The buttons that confirm and cancel. Enter presses the one, Escape the other.
struct DialogButtons {
  wxButton* ok;
  wxButton* cancel;
};
DialogButtons MakeDialogButtons(wxDialog& dialog, const char* okName, const char* cancelName);

/// Puts `content` and below it the buttons into the dialog and makes it as small as they allow.
void Fill(wxDialog& dialog, wxSizer* content, const DialogButtons& buttons);
void Fill(wxDialog& dialog, wxWindow* content, const DialogButtons& buttons);

}  // namespace ui
