#include "core/logs.h"

#include "core/code_page.h"
#include "core/files.h"

namespace core {

void AppendLine(std::string_view file, std::string_view line) {
  AppendToFile(file, ToSystem(line) + "\r\n");
}

// A backslash always goes in between, even behind a directory that ends in one.
ErrorLog::ErrorLog(std::string_view programDirectory)
    : file_(std::string(programDirectory) + "\\RunErr.Log") {}

void ErrorLog::LogError(std::string_view message) const {
  AppendLine(file_, Line(message, std::chrono::system_clock::now()));
}

std::string ErrorLog::Line(std::string_view message, WallTime time) {
  return "在 " + DateTimeText(time) + "捕获错误: " + std::string(message);
}

}  // namespace core

namespace ModCommon {

void AppendTrace(std::string_view text, std::string_view file, bool marker) {
  core::AppendLine(
      file, marker ? std::string(text) + "\r\n@@@@@@@@@@ CPRCreate @@@@@@@@@@" : std::string(text));
}

}  // namespace ModCommon
