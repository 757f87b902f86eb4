#include "web/default_pages.h"

#include <string_view>

#include "files/files.h"
#include "files/missing.h"
#include "platform/system_message.h"
#include "text/code_page.h"

namespace ModWeb {
namespace {

constexpr const char* kFile = "IndexFN.Log";

// More than eleven names of any file system.
constexpr std::size_t kMostBytes = 65536;

// Takes the next line, without its line end; false when there is none.
bool NextLine(std::string_view& text, std::string_view& line) {
  if (text.empty()) return false;
  const std::size_t end = text.find_first_of("\r\n");
  line = text.substr(0, end);
  if (end == std::string_view::npos) {
    text = {};
  } else {
    text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
  }
  return true;
}

}  // namespace

void LoadDefaultPages(const settings::Program& program, DefaultPageNames& names) {
  const std::string file = program.File(kFile);
  std::error_code error;
  const std::string content = text::DecodeFile(files::ReadFile(file, error, kMostBytes));
  if (error && !files::IsMissing(error)) {
    program.errors.LogError("IndexFN.Log: " + platform::SystemMessage(error));
  }
  if (!ModCommon::FileExists(file)) {
    names[0] = "index.htm";
    names[1] = "default.htm";
    return;
  }
  std::string_view rest = content;
  std::string_view line;
  std::size_t index = 0;
  while (NextLine(rest, line)) {
    if (index == names.size()) {
      program.errors.LogError("IndexFN.Log: more than 11 lines");
      return;
    }
    names[index++] = line;
  }
}

std::error_code SaveDefaultPages(const settings::Program& program,
                                 const std::vector<std::string>& names) {
  const std::string file = program.File(kFile);
  std::string lines;
  for (const std::string& name : names) lines += name + "\r\n";
  if (!names.empty()) return files::ReplaceContent(file, text::EncodeFile(lines));
  const std::error_code error = files::RemoveFile(file);
  return files::IsMissing(error) ? std::error_code() : error;
}

}  // namespace ModWeb
