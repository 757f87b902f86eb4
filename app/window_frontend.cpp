#include "app/window_frontend.h"

#include <wx/app.h>
#include <wx/init.h>
#include <wx/log.h>
#include <wx/utils.h>

#include <utility>

#include "net/window_loop.h"
#include "platform/window_language.h"
#include "ui/window/main_window.h"
#include "ui/window/splash_screen.h"
#include "ui/window/toolkit_messages.h"

namespace app {
namespace {

class ToolkitApp : public wxApp {
 public:
  // The program decides when it ends, and not the closing of the last window.
  bool OnInit() override {
    SetExitOnFrameDelete(false);
    return true;
  }
};

// Sets an environment variable, unless it is set already, for the lifetime of the object. Child
// processes must not inherit it.
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

// Starts and ends the toolkit.
class Toolkit {
 public:
  Toolkit() {
    platform::UseLanguageOfUser();
    wxApp::SetInstance(new ToolkitApp);
    // The toolkit gets the program's name but not its arguments.
    static char name[] = "Tarnwerk";
    static char* arguments[] = {name, nullptr};
    int count = 1;
    const wxLogNull silent;
    // Nothing here uses OpenGL, and on GTK just looking for it loads half a compiler.
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
  WindowFrontend(std::unique_ptr<Toolkit> toolkit, const settings::Program& program)
      : toolkit_(std::move(toolkit)), messages_(program.errors) {
    window_ = new ui::frmMain;  // owned by the toolkit
  }
  ~WindowFrontend() override { window_->Destroy(); }
  WindowFrontend(const WindowFrontend&) = delete;
  WindowFrontend& operator=(const WindowFrontend&) = delete;

  bool HasWindow() const override { return true; }
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
  ui::ToolkitMessages messages_;
  net::WindowLoop loop_;
  ui::frmMain* window_;
};

}  // namespace

std::unique_ptr<Frontend> MakeToolkitFrontend(const settings::Program& program) {
  auto toolkit = std::make_unique<Toolkit>();
  if (!toolkit->HasStarted()) return nullptr;
  return std::make_unique<WindowFrontend>(std::move(toolkit), program);
}

}  // namespace app
