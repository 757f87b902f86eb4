#include <cstdio>

#include "app/frontend.h"
#include "core/console_view.h"
#include "net/plain_loop.h"

namespace app {
namespace {

class ConsoleFrontend : public Frontend {
 public:
  bool HasWindow() const override { return false; }
  net::EventLoop& Loop() override { return loop_.Events(); }
  core::ManagerView& View() override { return view_; }
  void Attach(const ui::Manager&, std::function<void()>) override {}
  void ShowMainWindow() override {}
  void GoToTray() override {}
  void Run() override { loop_.Run(); }
  void End() override { loop_.Stop(); }

 private:
  net::PlainLoop loop_;
  core::ConsoleView view_{stdout};
};

}  // namespace

std::unique_ptr<Frontend> MakeConsoleFrontend() { return std::make_unique<ConsoleFrontend>(); }

}  // namespace app
