#include "platform/login_entry.h"

#include <string>

#include "platform/file.h"
#include "platform/program_location.h"
#include "platform/system_folders.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// The file has two levels of escapes: those inside a quoted word of Exec, and those of the string
// value as a whole.
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
    if (c == '%') quoted += '%';  // else it starts a field code
    quoted += c;
  }
  return quoted + "\"";
}

// Goes through "env" to set the program directory if it is not the usual one, and if the path
// contains "%": some desktops look up the first word before they unescape "%%".
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
