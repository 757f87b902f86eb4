#include "platform/linux/state_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <vector>

#include "platform/file.h"
#include "platform/linux/descriptor.h"
#include "platform/system_folders.h"
#include "platform/text_case.h"
#include "platform/whole_file.h"

namespace platform {
namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

// Real files stay far below; searching a larger one would take long.
constexpr std::size_t kLargest = std::size_t{1} << 20;

std::error_code LastError() { return {errno, std::generic_category()}; }

// A missing file reads as empty. An unreadable one is an error, so that it is not mistaken for an
// empty one and replaced.
std::string ReadAll(const fs::path& path, std::error_code& error) {
  File file = File::Open(path, File::Mode::kRead, error);
  if (!file.IsOpen()) {
    if (error == std::errc::no_such_file_or_directory) error.clear();
    return {};
  }
  std::string content(kLargest + 1, '\0');
  content.resize(file.Read(content.data(), content.size(), error));
  if (!error && content.size() > kLargest) error = std::make_error_code(std::errc::file_too_large);
  return error ? std::string() : content;
}

// The new file is private from its creation on.
void Replace(const fs::path& path, std::string_view bytes, std::error_code& error) {
  const std::string temporary = path.string() + ".new";
  unlink(temporary.c_str());
  if (!Descriptor(open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600))
           .IsOpen()) {
    error = LastError();
    return;
  }
  WriteWholeFile(temporary, bytes, error);
  if (!error) fs::rename(temporary, path, error);
  if (error) unlink(temporary.c_str());
}

Lines LinesOf(std::string_view content) {
  Lines lines;
  while (!content.empty()) {
    const std::size_t end = content.find('\n');
    lines.emplace_back(content.substr(0, end));
    if (lines.back().ends_with('\r')) lines.back().pop_back();
    if (end == std::string_view::npos) break;
    content.remove_prefix(end + 1);
  }
  return lines;
}

bool IsHeader(std::string_view line) { return line.starts_with('['); }

// The index of the line after the section's header, if there is such a section.
std::optional<std::size_t> FindSection(const Lines& lines, std::string_view section) {
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string_view line = lines[i];
    if (!IsHeader(line) || !line.ends_with(']')) continue;
    if (EqualIgnoringCase(line.substr(1, line.size() - 2), section)) return i + 1;
  }
  return std::nullopt;
}

std::optional<std::size_t> FindKey(const Lines& lines, std::size_t first, std::string_view key) {
  for (std::size_t i = first; i < lines.size() && !IsHeader(lines[i]); ++i) {
    const std::size_t equals = lines[i].find('=');
    if (equals == std::string::npos) continue;
    if (EqualIgnoringCase(std::string_view(lines[i]).substr(0, equals), key)) return i;
  }
  return std::nullopt;
}

std::size_t EnsureSection(Lines& lines, std::string_view section) {
  if (const auto found = FindSection(lines, section)) return *found;
  lines.push_back("[" + std::string(section) + "]");
  return lines.size();
}

void Change(const std::string& name, std::error_code& error,
            const std::function<void(Lines&)>& change) {
  const fs::path folder = StateDirectory();
  fs::create_directories(folder.parent_path(), error);
  if (error) return;
  if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
    error = LastError();
    return;
  }
  const Descriptor lock(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!lock.IsOpen() || flock(lock.Get(), LOCK_EX) != 0) {
    error = LastError();
    return;
  }
  Lines lines = LinesOf(ReadAll(folder / name, error));
  if (error) return;
  change(lines);
  std::string content;
  for (const std::string& line : lines) content += line + "\n";
  Replace(folder / name, content, error);
}

bool CanStand(std::string_view name, std::string_view forbidden) {
  using namespace std::string_view_literals;
  return name.find_first_of("\r\n\0"sv) == std::string_view::npos &&
         name.find_first_of(forbidden) == std::string_view::npos && !IsHeader(name);
}

Lines ReadLines(const std::string& name, std::error_code& error) {
  return LinesOf(ReadAll(StateDirectory() / name, error));
}

}  // namespace

bool StateFile::HasSection(std::string_view section, std::error_code& error) const {
  return FindSection(ReadLines(name_, error), section).has_value();
}

std::optional<std::string> StateFile::Find(std::string_view section, std::string_view key,
                                           std::error_code& error) const {
  const Lines lines = ReadLines(name_, error);
  const auto first = FindSection(lines, section);
  const auto line = first ? FindKey(lines, *first, key) : std::nullopt;
  if (!line) return std::nullopt;
  return lines[*line].substr(lines[*line].find('=') + 1);
}

void StateFile::AddSection(std::string_view section, std::error_code& error) {
  error = std::make_error_code(std::errc::invalid_argument);
  if (!CanStand(section, "")) return;
  Change(name_, error, [&](Lines& lines) { EnsureSection(lines, section); });
}

void StateFile::Set(std::string_view section, std::string_view key, std::string_view value,
                    std::error_code& error) {
  error = std::make_error_code(std::errc::invalid_argument);
  if (!CanStand(section, "") || !CanStand(key, "=")) return;
  std::string line = std::string(key) + "=" + std::string(value.substr(0, value.find('\0')));
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  Change(name_, error, [&](Lines& lines) {
    const std::size_t first = EnsureSection(lines, section);
    if (const auto known = FindKey(lines, first, key)) {
      lines[*known] = line;
    } else {
      lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(first), line);
    }
  });
}

}  // namespace platform
