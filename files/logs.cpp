#include "files/logs.h"

#include "files/files.h"
#include "text/code_page.h"
#include "text/printable_text.h"

namespace files {
namespace {

constexpr std::size_t kMostOfMessage = 4096;

}  // namespace

void AppendLine(std::string_view file, std::string_view line) {
  AppendToFile(file, text::ToSystem(line) + "\r\n");
}

// The backslash is always added, even if the directory already ends in one.
ErrorLog::ErrorLog(std::string_view programDirectory)
    : file_(std::string(programDirectory) + "\\RunErr.Log") {}

void ErrorLog::LogError(std::string_view message) const {
  AppendLine(file_, Line(message, std::chrono::system_clock::now()));
}

std::string ErrorLog::Line(std::string_view message, text::WallTime time) {
  // Some messages end in a line break of their own.
  constexpr std::string_view kLineEnd = "\r\n";
  const bool hasLineEnd = message.ends_with(kLineEnd);
  if (hasLineEnd) message.remove_suffix(kLineEnd.size());
  return "在 " + text::DateTimeText(time) +
         "捕获错误: " + text::Printable(message, kMostOfMessage) +
         std::string(hasLineEnd ? kLineEnd : "");
}

}  // namespace files

namespace ModCommon {

void AppendTrace(std::string_view text, std::string_view file, bool marker) {
  files::AppendLine(
      file, marker ? std::string(text) + "\r\n@@@@@@@@@@ CPRCreate @@@@@@@@@@" : std::string(text));
}

}  // namespace ModCommon
