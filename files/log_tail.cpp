#include "files/log_tail.h"

#include <algorithm>
#include <filesystem>

#include "files/files.h"
#include "platform/native_path.h"
#include "text/code_page.h"

namespace files {
namespace {

using platform::File;

constexpr std::size_t kPiece = 1U << 20;

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

bool IsSameFile(std::string_view left, std::string_view right) {
  std::error_code error;
  return std::filesystem::equivalent(platform::ExistingPath(left), platform::ExistingPath(right),
                                     error);
}

// Programs on two systems may have written the log; what is exported is in this one's set.
std::string InSystemSet(std::string_view lines) { return text::ToSystem(text::DecodeLines(lines)); }

// Copies the first `size` bytes, piece by piece. Pieces end with a line, unless one is longer.
std::error_code CopyBeginning(std::string_view log, std::uint64_t size, File& target) {
  std::error_code error;
  File source = OpenFile(log, File::Mode::kRead, error);
  std::string piece;
  while (!error && size > 0) {
    const std::size_t begun = piece.size();
    piece.resize(begun + std::min<std::uint64_t>(size, kPiece));
    piece.resize(begun + source.Read(piece.data() + begun, piece.size() - begun, error));
    if (piece.size() == begun) break;
    size -= piece.size() - begun;
    const std::size_t lineEnd = piece.rfind('\n');
    const std::size_t end = lineEnd == std::string::npos ? piece.size() : lineEnd + 1;
    target.Write(InSystemSet(std::string_view(piece).substr(0, end)), error);
    piece.erase(0, end);
  }
  if (!error && !piece.empty()) target.Write(InSystemSet(piece), error);
  return error;
}

}  // namespace

LogTail ReadLogTail(std::string_view log, std::uint64_t most) {
  std::error_code error;
  File file = OpenFile(log, File::Mode::kRead, error);
  if (!file.IsOpen()) return {};
  LogTail tail;
  const std::uint64_t size = file.SizeWhenOpened();
  // Includes the byte before, so that a line that begins exactly there counts as whole.
  if (size > most) tail.leftOut = size - most - 1;
  file.Skip(tail.leftOut, error);
  std::string bytes(size - tail.leftOut, '\0');
  bytes.resize(file.Read(bytes.data(), bytes.size(), error));
  if (size > most) {
    const std::size_t begin = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
    bytes.erase(0, begin);
    tail.leftOut += begin;
  }
  tail.lines = SplitLines(text::DecodeLines(bytes));
  return tail;
}

std::error_code ExportLog(std::string_view log, const LogTail& tail, std::string_view target) {
  // Exporting a log onto itself would empty it before it is read.
  if (!tail.IsWhole() && IsSameFile(log, target)) return {};
  std::error_code error;
  File file = OpenFile(target, File::Mode::kReplace, error);
  if (!file.IsOpen()) return error;
  if (!tail.IsWhole()) error = CopyBeginning(log, tail.leftOut, file);
  std::string lines;
  for (const std::string& line : tail.lines) lines += text::ToSystem(line) + "\r\n";
  if (!error) file.Write(lines, error);
  return error;
}

}  // namespace files
