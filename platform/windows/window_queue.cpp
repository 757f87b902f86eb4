#include "platform/window_queue.h"

#include <windows.h>

#include "platform/job_list.h"

namespace platform {

// A message-only window: every message loop of the thread delivers its messages, including the
// system's modal ones.
//
// Windows delivers posted messages before input, painting and timers, so busy servers would freeze
// the window. Therefore a timer runs alongside, whose message comes only when nothing else is
// waiting. If it does not come for a while, the jobs wait for it.
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
  static constexpr UINT_PTR kTurn = 1;
  static constexpr UINT kTimerInterval = 10;  // milliseconds, the system's minimum
  static constexpr ULONGLONG kPatience = 50;  // milliseconds

  void Wake() { PostMessageW(window_, kDrain, 0, 0); }

  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* system = reinterpret_cast<System*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (system == nullptr || (message != kDrain && message != WM_TIMER)) {
      return DefWindowProcW(window, message, first, second);
    }
    if (message == kDrain) {
      system->OnDrain();
    } else {
      system->OnWindowsTurn();
    }
    return 0;
  }

  void OnDrain() {
    if (waitingSince_ == 0) {
      waitingSince_ = GetTickCount64();
      SetTimer(window_, kTurn, kTimerInterval, nullptr);
    } else if (GetTickCount64() - waitingSince_ > kPatience) {
      return;  // the timer's message resumes the jobs
    }
    DrainSome();
  }

  void OnWindowsTurn() {
    KillTimer(window_, kTurn);
    waitingSince_ = 0;
    DrainSome();
  }

  void DrainSome() {
    if (jobs_.HasSeveral()) Wake();
    if (jobs_.Drain(kJobsPerPass)) Wake();
  }

  JobList jobs_;
  HWND window_;
  ULONGLONG waitingSince_ = 0;  // for the timer's message; 0 while the timer is off
};

WindowQueue::WindowQueue() : system_(std::make_unique<System>()) {}
WindowQueue::~WindowQueue() = default;
void WindowQueue::Post(std::unique_ptr<Job> job) { system_->Post(std::move(job)); }

}  // namespace platform
