#include "platform/standard_streams.h"

#include <windows.h>

#include <string>

#include "platform/code_page.h"
#include "platform/windows/wide_text.h"

namespace platform {
namespace {

// A console takes UTF-16, whatever its code page is.
bool WriteToConsole(HANDLE console, const std::string& text) {
  const std::wstring wide = WideText(text);
  DWORD written = 0;
  return WriteConsoleW(console, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr) !=
         0;
}

// A file or pipe.
bool WriteToOther(HANDLE output, const std::string& text) {
  const Charset charset = SystemCharset();
  const std::string bytes = charset == Charset::kUtf8 ? text : FromUtf8(charset, text);
  DWORD written = 0;
  return WriteFile(output, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) != 0;
}

bool IsConsole(HANDLE output) {
  DWORD mode = 0;
  return GetConsoleMode(output, &mode) != 0;
}

bool WriteToGiven(HANDLE given, const std::string& text) {
  if (given == nullptr || given == INVALID_HANDLE_VALUE) return false;
  return IsConsole(given) ? WriteToConsole(given, text) : WriteToOther(given, text);
}

void WriteToConsoleOfStarter(const std::string& text) {
  if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
  const HANDLE console =
      CreateFileW(L"CONOUT$", GENERIC_WRITE, FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
  if (console != INVALID_HANDLE_VALUE) {
    WriteToConsole(console, text);
    CloseHandle(console);
  }
  FreeConsole();
}

std::string WithLineBreaks(std::string_view line) {
  std::string text;
  for (const char c : line) text += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return text + "\r\n";
}

void Say(DWORD stream, std::string_view line) {
  const std::string text = WithLineBreaks(line);
  if (!WriteToGiven(GetStdHandle(stream), text)) WriteToConsoleOfStarter(text);
}

}  // namespace

void SayOnStandardOutput(std::string_view line) { Say(STD_OUTPUT_HANDLE, line); }

void SayOnStandardError(std::string_view line) { Say(STD_ERROR_HANDLE, line); }

void SecureStandardStreams() {}

}  // namespace platform
