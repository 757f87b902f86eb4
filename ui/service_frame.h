#pragma once

// A service's page: what service control has to say of it, its address, its folder, and buttons for
// what can be done with it. Below that is room for what is the service's own: the Web folder as a
// tree, the mail users. Decides nothing; what the buttons do is given to it.

#include <wx/panel.h>

#include <functional>
#include <string>

#include "core/service.h"

class wxBoxSizer;
class wxButton;
class wxHyperlinkCtrl;
class wxStaticBitmap;
class wxStaticText;

namespace ui {

class ServiceFrame : public wxPanel {
 public:
  struct Actions {
    std::function<void()> start;
    std::function<void()> stop;
    std::function<void()> askDomain;
    std::function<void()> showOptions;
    std::function<void()> openAddress;
    std::function<void()> openRoot;
  };

  ServiceFrame(wxWindow* parent, core::ServiceKind service, Actions actions);

  void SetResult(const std::string& text);
  void SetAddress(const std::string& text);
  void EnableAddress(bool enabled);
  void SetHint(const std::string& text);
  void SetRootDir(const std::string& path);
  void ShowButtons(bool running);
  void SetState(bool on);

  /// Whether the service runs as far as the user can see: its stop button is there.
  bool ShowsRunning() const;

  /// The room for what is the service's own.
  wxBoxSizer* Body() { return body_; }

  /// A row of buttons for the body, with a heading before them.
  wxBoxSizer* AddBodyHeading(const char* text);
  wxButton* AddBodyButton(wxBoxSizer* heading, const char* name, const char* text,
                          std::function<void()> action);

 private:
  wxSizer* MakeHeader(core::ServiceKind service);
  wxSizer* MakeFacts(core::ServiceKind service, const Actions& actions);
  wxSizer* MakeButtons(core::ServiceKind service, const Actions& actions);

  wxStaticBitmap* state_;
  wxStaticText* result_;
  wxHyperlinkCtrl* address_;
  wxStaticText* hint_;
  wxStaticText* rootDir_;
  wxButton* start_;
  wxButton* stop_;
  wxBoxSizer* body_;
};

/// A heading in the window's font, larger by `factor`.
wxStaticText* MakeHeading(wxWindow* parent, const char* text, double factor);

/// An address that can be clicked; hidden while it is empty.
wxHyperlinkCtrl* MakeAddress(wxWindow* parent, const char* name,
                             const std::function<void()>& onClick);
void ShowAddress(wxHyperlinkCtrl& address, const std::string& text);

/// A button that calls `action`.
wxButton* MakeActionButton(wxWindow* parent, const char* name, const char* text,
                           const std::function<void()>& action);

}  // namespace ui
