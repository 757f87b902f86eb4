#include "platform/process.h"

#include <windows.h>

#include <algorithm>
#include <asio/windows/object_handle.hpp>
#include <memory>
#include <utility>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

using Watch = asio::windows::object_handle;

class StartedProcess : public StartedProgram {
 public:
  explicit StartedProcess(std::shared_ptr<Watch> watch) : watch_(std::move(watch)) {}

  void EndWithin(std::chrono::milliseconds patience) override {
    const HANDLE process = watch_->native_handle();
    if (WaitForSingleObject(process, static_cast<DWORD>(patience.count())) == WAIT_OBJECT_0) return;
    TerminateProcess(process, 1);
    WaitForSingleObject(process, INFINITE);
  }

 private:
  std::shared_ptr<Watch> watch_;
};

}  // namespace

std::unique_ptr<StartedProgram> StartProgram(const asio::any_io_executor& executor,
                                             const std::filesystem::path& program,
                                             const std::vector<std::filesystem::path>& arguments,
                                             std::string_view separator,
                                             std::function<void()> onExit, std::error_code& error) {
  error.clear();
  if (!CanBeWord(program) || !std::all_of(arguments.begin(), arguments.end(), CanBeWord)) {
    error.assign(ERROR_FILE_NOT_FOUND, std::system_category());
    return nullptr;
  }
  std::wstring commandLine = program.wstring();
  for (const auto& argument : arguments) commandLine += WideText(separator) + argument.wstring();

  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_HIDE;
  PROCESS_INFORMATION started = {};
  // The program is passed separately: an unquoted path with blanks would otherwise be tried word by
  // word.
  const BOOL succeeded =
      CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                     nullptr, nullptr, &startup, &started);
  if (succeeded == 0) {
    error.assign(static_cast<int>(GetLastError()), std::system_category());
    return nullptr;
  }
  CloseHandle(started.hThread);
  auto watch = std::make_shared<Watch>(executor, started.hProcess);
  watch->async_wait([watch, done = std::move(onExit)](const asio::error_code& failed) {
    if (!failed) done();
  });
  return std::make_unique<StartedProcess>(std::move(watch));
}

}  // namespace platform
