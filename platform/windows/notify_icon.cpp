#include "platform/notify_icon.h"

#include <windows.h>

#include <shellapi.h>

#include <iterator>
#include <utility>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

constexpr UINT kCallbackMessage = 1280;
constexpr UINT kIconNumber = 0;  // a "STOP" start removes the icon by this number, too
constexpr std::size_t kLongestTip = 63;
constexpr const wchar_t* kProperty = L"TarnwerkNotifyIcon";

}  // namespace

class NotifyIcon::System {
 public:
  System(HWND window, std::function<void(unsigned)> onMouse)
      : window_(window), onMouse_(std::move(onMouse)) {}
  ~System() { Remove(); }
  System(const System&) = delete;
  System& operator=(const System&) = delete;

  bool Add(HICON icon, const std::string& tip) {
    if (ownHandler_ != nullptr) return true;
    data_ = {};
    data_.cbSize = sizeof(data_);
    data_.hWnd = window_;
    data_.uID = kIconNumber;
    data_.uFlags = NIF_MESSAGE | NIF_ICON | NIF_TIP;
    data_.uCallbackMessage = kCallbackMessage;
    data_.hIcon = icon;
    WideText(tip).copy(data_.szTip, kLongestTip);
    if (Shell_NotifyIconW(NIM_ADD, &data_) == 0) return false;
    TakeMessages();
    return true;
  }

  void SetIcon(HICON icon) {
    if (ownHandler_ == nullptr) return;
    data_.hIcon = icon;
    Shell_NotifyIconW(NIM_MODIFY, &data_);
  }

  bool Inform(const std::string& title, const std::string& text) {
    if (ownHandler_ == nullptr) return false;
    NOTIFYICONDATAW notice = data_;
    notice.uFlags = NIF_INFO;
    notice.dwInfoFlags = NIIF_INFO;
    WideText(title).copy(notice.szInfoTitle, std::size(notice.szInfoTitle) - 1);
    WideText(text).copy(notice.szInfo, std::size(notice.szInfo) - 1);
    return Shell_NotifyIconW(NIM_MODIFY, &notice) != 0;
  }

  void Remove() {
    if (ownHandler_ == nullptr) return;
    Shell_NotifyIconW(NIM_DELETE, &data_);
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(ownHandler_));
    RemovePropW(window_, kProperty);
    ownHandler_ = nullptr;
  }

  HWND Window() const { return window_; }

 private:
  void TakeMessages() {
    SetPropW(window_, kProperty, this);
    ownHandler_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&System::OnMessage)));
  }

  static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    static const UINT shellStarted = RegisterWindowMessageW(L"TaskbarCreated");
    auto* system = static_cast<System*>(GetPropW(window, kProperty));
    if (system == nullptr) return DefWindowProcW(window, message, first, second);
    if (message == kCallbackMessage) {
      system->onMouse_(static_cast<unsigned>(second));
      return 0;
    }
    if (message == shellStarted) Shell_NotifyIconW(NIM_ADD, &system->data_);
    return CallWindowProcW(system->ownHandler_, window, message, first, second);
  }

  HWND window_;
  std::function<void(unsigned)> onMouse_;
  NOTIFYICONDATAW data_ = {};
  WNDPROC ownHandler_ = nullptr;  // the window's own, while replaced
};

NotifyIcon::NotifyIcon(void* window, std::function<void(unsigned)> onMouse)
    : system_(std::make_unique<System>(static_cast<HWND>(window), std::move(onMouse))) {}

NotifyIcon::~NotifyIcon() = default;

int NotifyIcon::IconSize() const { return GetSystemMetrics(SM_CXSMICON); }

bool NotifyIcon::Add(void* icon, const std::string& tip) {
  return system_->Add(static_cast<HICON>(icon), tip);
}

void NotifyIcon::SetIcon(void* icon) { system_->SetIcon(static_cast<HICON>(icon)); }

bool NotifyIcon::Inform(const std::string& title, const std::string& text) {
  return system_->Inform(title, text);
}

void NotifyIcon::Remove() { system_->Remove(); }

void NotifyIcon::BeforeMenu() { SetForegroundWindow(system_->Window()); }

void NotifyIcon::AfterMenu() { PostMessageW(system_->Window(), WM_NULL, 0, 0); }

}  // namespace platform
