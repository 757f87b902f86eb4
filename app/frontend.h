#pragma once

// The user interface: a window or a console. It provides the loop that the program runs on and the
// view that service control writes to.

#include <functional>
#include <memory>

#include "core/manager_view.h"
#include "net/event_loop.h"
#include "settings/program.h"
#include "ui/window/manager.h"

namespace app {

class Frontend {
 public:
  virtual ~Frontend() = default;

  /// Whether the user can see and operate the program.
  virtual bool HasWindow() const = 0;

  virtual net::EventLoop& Loop() = 0;
  virtual core::ManagerView& View() = 0;

  /// Called once, before anything is shown. `manager`: the services and their control, for the
  /// buttons; `onClose` runs when the user closes the program.
  virtual void Attach(const ui::Manager& manager, std::function<void()> onClose) = 0;

  virtual void ShowMainWindow() = 0;
  virtual void GoToTray() = 0;

  /// Runs the loop until End is called, which also dismisses open dialogs.
  virtual void Run() = 0;
  virtual void End() = 0;
};

std::unique_ptr<Frontend> MakeConsoleFrontend();

/// Null if there is no window system or it cannot be reached.
std::unique_ptr<Frontend> MakeWindowFrontend(const settings::Program& program);

}  // namespace app
