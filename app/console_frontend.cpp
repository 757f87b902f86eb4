#include <cstdio>

#include "app/frontend.h"
#include "core/console_view.h"
#include "core/plain_loop.h"

namespace app {
namespace {

class ConsoleFrontend : public Frontend {
 public:
  core::EventLoop& Loop() override { return loop_.Events(); }
  core::ManagerView& View() override { return view_; }
  void Attach(const ui::Manager&, std::function<void()>) override {}
  void ShowMainWindow() override {}
  void GoToTray() override {}
  void Run() override { loop_.Run(); }
  void End() override { loop_.Stop(); }

 private:
  core::PlainLoop loop_;
  core::ConsoleView view_{stdout};
};

}  // namespace

std::unique_ptr<Frontend> MakeConsoleFrontend() { return std::make_unique<ConsoleFrontend>(); }

}  // namespace app
