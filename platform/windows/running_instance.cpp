#include "platform/running_instance.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <asio/post.hpp>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace platform {
namespace {

namespace fs = std::filesystem;

// Other programs find the running instance by these two names.
constexpr const wchar_t* kWindowClass = L"ThunderRT6FormDC";
constexpr const wchar_t* kWindowCaption = L"Tarnwerk";

std::wstring MutexName(const fs::path& executable, const fs::path& programDirectory) {
  // Different links to the same directory must give the same name.
  std::error_code error;
  const fs::path directory = fs::weakly_canonical(programDirectory, error);
  std::wstring both = executable.wstring() + L"\n" + directory.wstring();
  CharUpperBuffW(both.data(), static_cast<DWORD>(both.size()));
  std::uint64_t hash = 14695981039346656037U;
  for (const wchar_t c : both) hash = (hash ^ c) * 1099511628211U;
  return L"Local\\Tarnwerk-" + std::to_wstring(hash);
}

std::vector<HWND> FindInstances() {
  std::vector<HWND> windows;
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, kWindowClass, kWindowCaption)) != nullptr) {
    windows.push_back(window);
  }
  return windows;
}

DWORD ProcessOf(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  return process;
}

bool IsOfThisProcess(HWND window) { return ProcessOf(window) == GetCurrentProcessId(); }

// Without a main window, the instance is found by an invisible one.
class WindowInstance : public RunningInstance {
 public:
  explicit WindowInstance(HANDLE mutex) : mutex_(mutex) {}
  ~WindowInstance() override {
    if (window_ != nullptr) DestroyWindow(window_);
    if (mutex_ != nullptr) CloseHandle(mutex_);
  }
  WindowInstance(const WindowInstance&) = delete;
  WindowInstance& operator=(const WindowInstance&) = delete;

  void OnCloseRequest(const asio::any_io_executor& executor,
                      std::function<void()> onClose) override {
    const std::vector<HWND> windows = FindInstances();
    // A main window with that class and caption handles the request itself.
    if (std::any_of(windows.begin(), windows.end(), &IsOfThisProcess)) return;
    executor_ = executor;
    onClose_ = std::move(onClose);
    MakeWindow();
  }

  void OnStartRequest(const asio::any_io_executor&, std::function<void()>) override {}

 private:
  void MakeWindow() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = &WindowInstance::OnMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = kWindowClass;
    RegisterClassW(&windowClass);
    window_ = CreateWindowW(kWindowClass, kWindowCaption, WS_OVERLAPPED, 0, 0, 0, 0, nullptr,
                            nullptr, windowClass.hInstance, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }

  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    if (message != WM_CLOSE) return DefWindowProcW(window, message, first, second);
    auto* instance = reinterpret_cast<WindowInstance*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (instance == nullptr) return 0;
    if (auto onClose = std::exchange(instance->onClose_, nullptr)) {
      asio::post(instance->executor_, std::move(onClose));
    }
    return 0;
  }

  HANDLE mutex_;
  HWND window_ = nullptr;
  asio::any_io_executor executor_;
  std::function<void()> onClose_;
};

void AskToClose(HWND window) {
  NOTIFYICONDATAW icon = {};
  icon.cbSize = sizeof(icon);
  icon.hWnd = window;
  Shell_NotifyIconW(NIM_DELETE, &icon);
  PostMessageW(window, WM_CLOSE, 0, 0);
}

// The processes whose windows were found. They end some time after their windows.
class OpenedProcesses {
 public:
  OpenedProcesses() = default;
  ~OpenedProcesses() {
    for (const auto& [number, handle] : handles_) CloseHandle(handle);
  }
  OpenedProcesses(const OpenedProcesses&) = delete;
  OpenedProcesses& operator=(const OpenedProcesses&) = delete;

  void AddThatOf(HWND window) {
    const DWORD number = ProcessOf(window);
    if (number == GetCurrentProcessId() || handles_.count(number) != 0) return;
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, number);
    if (handle != nullptr) handles_.emplace(number, handle);
  }

  bool EndBefore(std::chrono::steady_clock::time_point deadline) const {
    return std::all_of(handles_.begin(), handles_.end(), [deadline](const auto& process) {
      const auto left =
          std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
      const auto patience = static_cast<DWORD>(std::max<std::int64_t>(left.count(), 0));
      return WaitForSingleObject(process.second, patience) == WAIT_OBJECT_0;
    });
  }

 private:
  std::map<DWORD, HANDLE> handles_;
};

void LetPendingEventsRun() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
  Sleep(50);
}

}  // namespace

std::unique_ptr<RunningInstance> RunningInstance::Announce(const fs::path& executable,
                                                           const fs::path& programDirectory) {
  const HANDLE mutex =
      CreateMutexW(nullptr, FALSE, MutexName(executable, programDirectory).c_str());
  if (mutex != nullptr && GetLastError() == ERROR_ALREADY_EXISTS) {
    CloseHandle(mutex);
    return nullptr;
  }
  return std::make_unique<WindowInstance>(mutex);
}

bool AskToStart(const fs::path&, const fs::path&) { return false; }

bool CloseRunningInstances(std::chrono::seconds patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  OpenedProcesses processes;
  for (auto found = FindInstances(); !found.empty(); found = FindInstances()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    for (const HWND window : found) {
      processes.AddThatOf(window);
      AskToClose(window);
    }
    LetPendingEventsRun();
  }
  return processes.EndBefore(deadline);
}

}  // namespace platform
