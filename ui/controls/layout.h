#pragma once

// The common layout of all windows: distances, rows of fields, groups, and the buttons at the
// bottom. Distances are in pixels at 100 % and grow with the scale of the screen.
//
// "&" in the text of a control marks its mnemonic.

#include <wx/gbsizer.h>
#include <wx/sizer.h>
#include <wx/window.h>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>

class wxButton;
class wxCheckBox;
class wxDialog;
class wxStaticText;
class wxTextCtrl;

namespace ui {

inline constexpr int kEdge = 12;     // from a window's border to its content, and between groups
inline constexpr int kGap = 8;       // between two controls
inline constexpr int kTightGap = 4;  // between lines that belong together
inline constexpr int kIndent = 24;   // of what belongs to a check box

/// Sets the name of a control and returns the control.
template <class Control>
Control* Named(Control* control, const char* name) {
  control->SetName(name);
  return control;
}

wxButton* MakeButton(wxWindow* parent, const char* name, const char* text, int id = wxID_ANY);
wxCheckBox* MakeCheckBox(wxWindow* parent, const char* name, const char* text);

/// A text field at least `width` pixels wide, as high as Chinese letters need.
wxTextCtrl* MakeField(wxWindow* parent, const char* name, int width, long style = 0);

/// Makes a text field of the toolkit's own as high as that.
void FitToLetters(wxTextCtrl& field);

/// Items stacked vertically, each as wide as the widest.
class Column {
 public:
  explicit Column(wxWindow* window, int gap = kGap);

  /// Items with a `proportion` above 0 share the remaining height.
  void Add(wxWindow* part, int proportion = 0);
  void Add(wxSizer* part, int proportion = 0);

  /// The sizer to add to the parent's.
  wxSizer* Sizer() const { return sizer_; }

 private:
  wxSizerFlags Next(int proportion);

  wxBoxSizer* sizer_;
  int gap_;  // in physical pixels
};

/// A column in a box with a heading.
class Group {
 public:
  Group(wxWindow* parent, const char* heading);

  /// The parent for the controls in the box.
  wxWindow* Parent() const;
  Column& Content() { return content_; }
  wxSizer* Sizer() const { return box_; }

 private:
  wxStaticBoxSizer* box_;
  Column content_;
};

/// What is said of a text being typed.
using FieldRemark = std::function<std::string(const std::string& typed)>;

/// What is wrong with a text being typed; none if nothing is.
using FieldComplaint = std::function<std::optional<std::string>(const std::string& typed)>;

/// Rows of a label, a text field that takes the remaining width, and optionally a button.
class FieldRows {
 public:
  explicit FieldRows(wxWindow* parent);

  /// `style`: the toolkit's style of the text field.
  wxTextCtrl* Add(const char* name, const char* label, long style = 0);

  /// The same with a button after the field, returned in `button`.
  wxTextCtrl* AddWithButton(const char* name, const char* label, const char* buttonName,
                            const char* buttonText, wxButton*& button);

  /// Adds a line below the last field: `usual`, or the complaint about what is being typed. Nothing
  /// is refused.
  void AddNote(const char* name, const char* usual, FieldComplaint complaint);
  void AddNote(const char* name, FieldRemark usual, FieldComplaint complaint);

  /// Adds a row of the full width.
  void AddAcross(wxSizer* part);

  wxSizer* Sizer() const { return grid_; }

 private:
  wxTextCtrl* AddField(const char* name, const char* label, long style, int columns);

  wxWindow* parent_;
  wxGridBagSizer* grid_;
  wxTextCtrl* last_ = nullptr;
  int row_ = -1;
};

/// A sentence on what a choice changes, for sighted users and for others.
wxStaticText* Explain(wxWindow& control, const char* text);

/// A check box at `indent`, and below it a sentence on what it changes.
struct ExplainedBox {
  wxCheckBox* box;
  wxSizer* sizer;
};
ExplainedBox MakeExplainedBox(wxWindow* parent, const char* name, const char* text,
                              const char* explanation, int indent = 0);

/// Controls side by side.
wxSizer* MakeRow(wxWindow* window, std::initializer_list<wxWindow*> controls);

/// Replaces one control by another and moves the focus with it.
void ShowInstead(wxWindow& of, wxWindow& shown);

/// Enlarges the window of `control` if its content needs more room.
void GrowToFit(wxWindow& control);

/// Sets `content` as the content of a notebook page, with the usual margin. Returns `page`.
wxWindow* WithMargin(wxWindow* page, wxSizer* content);

/// The same for a single child window of the page.
wxWindow* WithMargin(wxWindow* page, wxWindow* content);

/// The buttons that confirm and cancel: Enter presses the first, Escape the second.
struct DialogButtons {
  wxButton* ok;
  wxButton* cancel;
};
DialogButtons MakeDialogButtons(wxDialog& dialog, const char* okName, const char* cancelName);

/// Puts `content` above the buttons and shrinks the dialog to fit.
void Fill(wxDialog& dialog, wxSizer* content, const DialogButtons& buttons);
void Fill(wxDialog& dialog, wxWindow* content, const DialogButtons& buttons);

}  // namespace ui
