#include "platform/window_queue.h"

#include <windows.h>

#include "platform/job_list.h"

namespace platform {

// A message-only window: its messages are delivered by every message loop of the thread, the
// system's own modal ones included.
class WindowQueue::System {
 public:
  System() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = &System::OnMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"TarnwerkQueue";
    RegisterClassW(&windowClass);  // fails harmlessly for the second queue of a process
    window_ = CreateWindowW(windowClass.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            windowClass.hInstance, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  ~System() { DestroyWindow(window_); }
  System(const System&) = delete;
  System& operator=(const System&) = delete;

  void Post(std::unique_ptr<Job> job) {
    if (jobs_.Add(std::move(job))) Wake();
  }

 private:
  static constexpr UINT kDrain = WM_APP;
  static constexpr int kJobsPerPass = 64;

  void Wake() { PostMessageW(window_, kDrain, 0, 0); }

  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message != kDrain) return DefWindowProcW(window, message, first, second);
    auto* system = reinterpret_cast<System*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (system == nullptr) return 0;
    if (system->jobs_.HasSeveral()) system->Wake();
    if (system->jobs_.Drain(kJobsPerPass)) system->Wake();
    return 0;
  }

  JobList jobs_;
  HWND window_;
};

WindowQueue::WindowQueue() : system_(std::make_unique<System>()) {}
WindowQueue::~WindowQueue() = default;
void WindowQueue::Post(std::unique_ptr<Job> job) { system_->Post(std::move(job)); }

}  // namespace platform
