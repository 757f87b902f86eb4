#include "settings/linux/state_file.h"

#include <utility>

#include "files/files.h"
#include "platform/file.h"
#include "platform/linux/locked_folder.h"
#include "platform/system_folders.h"
#include "platform/whole_file.h"

namespace settings {
namespace {

using platform::File;

// A missing file reads as empty. One that cannot be read is an error, so that it is not taken for
// empty and replaced. No such file grows to the limit, and searching it would take long.
IniText Read(const std::string& name, std::error_code& error) {
  std::string bytes;
  File file = File::Open(platform::StateDirectory() / name, File::Mode::kRead, error);
  if (file.IsOpen()) {
    bytes = platform::ReadWholeFile(file, files::kLargestTextFile, error);
  } else if (error == std::errc::no_such_file_or_directory) {
    error.clear();
  }
  return IniText(std::move(bytes), platform::Charset::kUtf8, "\n");
}

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

// Whether the name comes back unchanged: not trimmed, cut, or taken for a comment or a section.
bool CanHold(std::string_view name, char end) {
  using namespace std::string_view_literals;
  if (name.empty() || IsBlank(name.front()) || IsBlank(name.back())) return false;
  if (name.front() == ';' || name.front() == '[') return false;
  return name.find_first_of("\r\n\0"sv) == std::string_view::npos &&
         name.find(end) == std::string_view::npos;
}

bool CanHoldSection(std::string_view name) { return CanHold(name, ']'); }
bool CanHoldKey(std::string_view name) { return CanHold(name, '='); }

}  // namespace

bool StateFile::HasSection(std::string_view section, std::error_code& error) const {
  return Read(name_, error).HasSection(section);
}

std::optional<std::string> StateFile::Find(std::string_view section, std::string_view key,
                                           std::error_code& error) const {
  return Read(name_, error).Find(section, key);
}

std::error_code StateFile::AddSection(std::string_view section) {
  if (!CanHoldSection(section)) return std::make_error_code(std::errc::invalid_argument);
  return Change([&](IniText& text) { text.AddSection(section); });
}

std::error_code StateFile::Set(std::string_view section, std::string_view key,
                               std::string_view value) {
  if (!CanHoldSection(section) || !CanHoldKey(key)) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  return Change([&](IniText& text) { text.Set(section, key, value); });
}

std::error_code StateFile::Change(const std::function<void(IniText&)>& change) {
  const std::filesystem::path folder = platform::StateDirectory();
  std::error_code error;
  const platform::LockedFolder lock(folder, error);
  if (error) return error;
  IniText text = Read(name_, error);
  if (error) return error;
  const std::string before(text.Bytes());
  change(text);
  // What every start sets again costs the disk nothing.
  if (text.Bytes() == before) return {};
  platform::ReplaceWholeFile(folder / name_, text.Bytes(), platform::Access::kUserAlone, error);
  return error;
}

}  // namespace settings
