#pragma once

// The list of default documents with the buttons that change it. The order is the one in which the
// server tries them.

#include <wx/panel.h>

#include <string>
#include <vector>

class wxButton;
class wxListBox;

namespace ui {

class DocumentList : public wxPanel {
 public:
  explicit DocumentList(wxWindow* parent);

  /// Empty names are left out.
  void Set(const std::vector<std::string>& names);
  std::vector<std::string> Names() const;

  wxListBox* lstDocument;
  wxButton* cmdAddDocument;
  wxButton* cmdDelDocument;
  wxButton* cmdUpDocument;
  wxButton* cmdDownDocument;

 private:
  void OnAdd();
  void OnDelete();
  void Move(int distance);
};

}  // namespace ui
