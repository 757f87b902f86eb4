#pragma once

// The program's icon in the desktop's tray, if the desktop has one. The host provides its menu.

#include <memory>
#include <string>

#include "ui/window/tray_picture.h"

class wxMenu;
class wxFrame;
class wxWindow;

namespace ui {

class TrayHost {
 public:
  virtual ~TrayHost() = default;

  /// A new menu for the current state. Its events go to the menu's own event handler.
  virtual std::unique_ptr<wxMenu> MakeMenuForTray() = 0;

  /// The modal dialog that the user has to close first; null if there is none.
  virtual wxWindow* InnermostDialog() = 0;

  /// The user wants the window back.
  virtual void OnTrayRestore() = 0;

  /// The desktop has no tray any more.
  virtual void OnTrayLost() = 0;
};

class Tray {
 public:
  virtual ~Tray() = default;

  /// False if the desktop has no tray; nothing has changed then.
  virtual bool Add() = 0;
  virtual void Remove() = 0;

  /// Shows a notice at the icon. False if the desktop's notices have nothing to do with icons.
  virtual bool Inform(const std::string& title, const std::string& text) = 0;

  /// Must be called when the host's menu changes.
  virtual void UpdateMenu() = 0;

  /// Also before the icon is added.
  virtual void SetState(TrayState state) = 0;
};

/// Creates the tray for `window`. The window and the host must outlive it.
std::unique_ptr<Tray> MakeTray(wxFrame& window, TrayHost& host);

inline constexpr const char* kTrayTip = "Tarnhost";

}  // namespace ui
