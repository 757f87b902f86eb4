#pragma once

// The view of a program without a display: it writes to a stream what a user would look for in the
// window, a line each and at once: the outcome of a start or stop with the address, and the
// service's status text.

#include <array>
#include <cstdio>
#include <string>

#include "core/manager_view.h"

namespace core {

class ConsoleView : public ManagerView {
 public:
  explicit ConsoleView(std::FILE* stream) : stream_(stream) {}

  void SetResult(ServiceKind service, const std::string& text) override;
  void SetAddress(ServiceKind service, const std::string& text) override;
  void EnableAddress(ServiceKind, bool) override {}
  void SetHint(ServiceKind, const std::string&) override {}
  void SetRootDir(ServiceKind, const std::string&) override {}
  void ShowButtons(ServiceKind, bool) override {}
  void SwitchMenuItems(ServiceKind, bool) override {}
  void SetStatusPanel(ServiceKind service, bool on, const std::string& text) override;
  void TellSettingsFault(ServiceKind, const std::string& text) override { Print(text); }

 private:
  void Print(const std::string& line);

  std::FILE* stream_;
  std::array<std::string, 3> results_;
};

}  // namespace core
