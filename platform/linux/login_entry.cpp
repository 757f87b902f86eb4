#include "platform/login_entry.h"

#include <string>

#include "platform/file.h"
#include "platform/program_location.h"
#include "platform/system_folders.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// The entry file has two layers: within a quoted word of Exec some characters are escaped, and then
// the value as a whole is a string with escapes of its own.
std::string StringValue(std::string_view text) {
  std::string value;
  for (const char c : text) {
    if (c == '\\')
      value += "\\\\";
    else if (c == '\n')
      value += "\\n";
    else if (c == '\t')
      value += "\\t";
    else if (c == '\r')
      value += "\\r";
    else
      value += c;
  }
  return value;
}

std::string QuotedWord(std::string_view word) {
  std::string quoted = "\"";
  for (const char c : word) {
    if (std::string_view("\"`$\\").find(c) != std::string_view::npos) quoted += '\\';
    if (c == '%') quoted += '%';  // else it begins a field code
    quoted += c;
  }
  return quoted + "\"";
}

// Through "env" where the program directory is another one, which the environment tells, and where
// the path has a "%": some desktops look for the first word before they undo its doubling.
std::string CommandLine(const fs::path& executable) {
  const fs::path home = ProgramDirectory();
  const bool plain = home == executable.parent_path();
  std::string line = QuotedWord(executable.string());
  if (!plain) line = QuotedWord("TARNWERK_HOME=" + home.string()) + " " + line;
  return plain && line.find('%') == std::string::npos ? line : "env " + line;
}

std::string EntryText() {
  const fs::path executable = ExecutablePath();
  return "[Desktop Entry]\n"
         "Type=Application\n"
         "Name=Tarnwerk\n"
         "Comment=Personal network server manager\n"
         "Comment[zh_CN]=个人网络服务器管理\n"
         "TryExec=" +
         StringValue(executable.string()) +
         "\n"
         "Exec=" +
         StringValue(CommandLine(executable)) +
         "\n"
         "Icon=tarnwerk\n"
         "Terminal=false\n";
}

fs::path EntryFile(std::string_view name) {
  return ConfigurationDirectory() / "autostart" / (std::string(name) + ".desktop");
}

}  // namespace

bool HasLoginEntry(std::string_view name) {
  std::error_code error;
  return fs::exists(EntryFile(name), error);
}

std::error_code MakeLoginEntry(std::string_view name) {
  std::error_code error;
  const fs::path path = EntryFile(name);
  fs::create_directories(path.parent_path(), error);
  if (error) return error;
  File file = File::Open(path, File::Mode::kReplace, error);
  if (!error) file.Write(EntryText(), error);
  return error;
}

std::error_code RemoveLoginEntry(std::string_view name) {
  std::error_code error;
  fs::remove(EntryFile(name), error);
  return error;
}

}  // namespace platform
