#pragma once

// What the user has in front of him: a window, or a console. It brings the loop that the program
// runs on and the view that service control writes to.

#include <functional>
#include <memory>

#include "core/manager_view.h"
#include "net/event_loop.h"
#include "ui/window/manager.h"

namespace app {

class Frontend {
 public:
  virtual ~Frontend() = default;

  virtual net::EventLoop& Loop() = 0;
  virtual core::ManagerView& View() = 0;

  /// Tells the front end what its buttons act on, before anything is shown, and what is to happen
  /// when the user closes it.
  virtual void Attach(const ui::Manager& manager, std::function<void()> onClose) = 0;

  virtual void ShowMainWindow() = 0;
  virtual void GoToTray() = 0;

  /// Serves events until End is called. A dialog that is open then is dismissed first.
  virtual void Run() = 0;
  virtual void End() = 0;
};

std::unique_ptr<Frontend> MakeConsoleFrontend();

/// Null where there is no window system or none can be reached.
std::unique_ptr<Frontend> MakeWindowFrontend();

}  // namespace app
