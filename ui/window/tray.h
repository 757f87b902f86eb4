#pragma once

// The program's icon in the desktop's tray, as far as the desktop has one. Its menu is the host's.

#include <wx/bmpbndl.h>

#include <memory>

class wxMenu;
class wxFrame;

namespace ui {

class TrayHost {
 public:
  virtual ~TrayHost() = default;

  /// The menu as it is to be now. Its events go to the menu's own event handler.
  virtual std::unique_ptr<wxMenu> MakeMenuForTray() = 0;

  /// The user wants the window back.
  virtual void OnTrayRestore() = 0;
};

class Tray {
 public:
  virtual ~Tray() = default;

  /// False if the desktop has no tray: then nothing has happened.
  virtual bool Add() = 0;
  virtual void Remove() = 0;

  /// The host's menu has changed.
  virtual void UpdateMenu() = 0;
};

/// The tray for `window`, whose icon `icon` is. Both must outlive it.
std::unique_ptr<Tray> MakeTray(wxFrame& window, const wxBitmapBundle& icon, TrayHost& host);

inline constexpr const char* kTrayTip = "Tarnhost";

}  // namespace ui
