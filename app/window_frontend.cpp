#include "app/window_frontend.h"

#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/utils.h>

#include <utility>

#include "net/window_loop.h"
#include "ui/window/main_window.h"
#include "ui/window/splash_screen.h"

namespace app {
namespace {

class ToolkitApp : public wxApp {
 public:
  // The program decides when it ends, not the last window that is closed.
  bool OnInit() override {
    SetExitOnFrameDelete(false);
    return true;
  }
};

// An environment variable that holds for as long as the object lives, if it was not set already;
// programs started later are not to inherit it.
class PassingVariable {
 public:
  PassingVariable(const wxString& name, const wxString& value)
      : name_(name), isOurs_(!wxGetEnv(name, nullptr)) {
    if (isOurs_) wxSetEnv(name, value);
  }
  ~PassingVariable() {
    if (isOurs_) wxUnsetEnv(name_);
  }
  PassingVariable(const PassingVariable&) = delete;
  PassingVariable& operator=(const PassingVariable&) = delete;

 private:
  wxString name_;
  bool isOurs_;
};

// The toolkit, started and ended with the object.
class Toolkit {
 public:
  Toolkit() {
    wxApp::SetInstance(new ToolkitApp);
    // The toolkit sees the program's name and none of its words.
    static char name[] = "Tarnwerk";
    static char* arguments[] = {name, nullptr};
    int count = 1;
    const wxLogNull silent;
    // Nothing of ours is drawn by OpenGL, and to look for it loads half of a compiler on GTK.
    const PassingVariable withoutOpenGl("GDK_GL", "disable");
    started_ = wxEntryStart(count, arguments) && wxTheApp->CallOnInit();
  }
  ~Toolkit() {
    if (started_) wxEntryCleanup();
  }
  Toolkit(const Toolkit&) = delete;
  Toolkit& operator=(const Toolkit&) = delete;

  bool HasStarted() const { return started_; }

 private:
  bool started_ = false;
};

class WindowFrontend : public Frontend {
 public:
  explicit WindowFrontend(std::unique_ptr<Toolkit> toolkit) : toolkit_(std::move(toolkit)) {
    window_ = new ui::frmMain;  // the toolkit deletes its windows itself
  }
  ~WindowFrontend() override { window_->Destroy(); }
  WindowFrontend(const WindowFrontend&) = delete;
  WindowFrontend& operator=(const WindowFrontend&) = delete;

  net::EventLoop& Loop() override { return loop_.Events(); }
  core::ManagerView& View() override { return *window_; }
  void Attach(const ui::Manager& manager, std::function<void()> onClose) override {
    window_->Attach(manager, std::move(onClose));
  }
  void ShowMainWindow() override {
    ui::ShowSplashScreen([this] { window_->Open(); });
  }
  void GoToTray() override { window_->GoToTray(); }
  void Run() override { wxTheApp->OnRun(); }
  void End() override {
    window_->CloseEverything([] { wxTheApp->ExitMainLoop(); });
  }

 private:
  std::unique_ptr<Toolkit> toolkit_;
  net::WindowLoop loop_;
  ui::frmMain* window_;
};

}  // namespace

std::unique_ptr<Frontend> MakeToolkitFrontend() {
  auto toolkit = std::make_unique<Toolkit>();
  if (!toolkit->HasStarted()) return nullptr;
  return std::make_unique<WindowFrontend>(std::move(toolkit));
}

}  // namespace app
