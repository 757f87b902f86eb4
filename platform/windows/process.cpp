#include "platform/process.h"

#include <windows.h>

#include <asio/windows/object_handle.hpp>
#include <memory>

#include "platform/windows/wide_text.h"

namespace platform {

void StartProgram(const asio::any_io_executor& executor, const std::filesystem::path& program,
                  const std::vector<std::filesystem::path>& arguments, std::string_view separator,
                  std::function<void()> onExit, std::error_code& error) {
  error.clear();
  std::wstring commandLine = program.wstring();
  for (const auto& argument : arguments) commandLine += WideText(separator) + argument.wstring();

  STARTUPINFOW startup = {};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_HIDE;
  PROCESS_INFORMATION started = {};
  // The program is named apart from its command line: an unquoted path with blanks would otherwise
  // be tried word by word.
  const BOOL succeeded =
      CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                     nullptr, nullptr, &startup, &started);
  if (succeeded == 0) {
    error.assign(static_cast<int>(GetLastError()), std::system_category());
    return;
  }
  CloseHandle(started.hThread);
  auto watch = std::make_shared<asio::windows::object_handle>(executor, started.hProcess);
  watch->async_wait([watch, done = std::move(onExit)](const asio::error_code& failed) {
    if (!failed) done();
  });
}

}  // namespace platform
