#pragma once

// An entry of the window's side bar: a picture above a label. One of several entries is selected. A
// click anywhere on it chooses it; with the keyboard, Tab and the arrow keys move between entries,
// and Enter and Space choose.

#include <wx/window.h>

#include <functional>
#include <string>

class wxStaticBitmap;
class wxStaticText;

namespace ui {

class Selector : public wxWindow {
 public:
  struct Names {
    const char* self;
    const char* picture;
    const char* label;
  };

  Selector(wxWindow* parent, Names names, const char* art, const char* caption,
           std::function<void()> onChoose);

  void Select(bool selected);
  bool IsSelected() const { return selected_; }

  /// Shows `count` in parentheses after the caption. Empty hides it. The entry is wide enough for
  /// two digits and a plus after a call of KeepRoomForCount.
  void ShowCount(const std::string& count);
  void KeepRoomForCount();

 private:
  void BindMouse(wxWindow* window);
  void OnKey(wxKeyEvent& event);
  void OnPaint();
  void TellReaders();
  void SetHovered(bool hovered);
  wxColour Ground() const;
  void ShowGround();

  const std::string caption_;
  std::function<void()> onChoose_;
  wxStaticBitmap* picture_;
  wxStaticText* label_;
  bool selected_ = false;
  bool hovered_ = false;
};

}  // namespace ui
