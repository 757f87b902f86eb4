#include "settings/server_ini.h"

#include "settings/ini_file.h"
#include "text/strings.h"

namespace settings {
namespace {

class TornCategory : public std::error_category {
 public:
  const char* name() const noexcept override { return "settings"; }
  std::string message(int) const override { return "the file is torn"; }
};

}  // namespace

std::error_code TornSettings() {
  static const TornCategory category;
  return {1, category};
}

// A truncated value cannot be told from a short one.
bool AreTorn(std::string_view bytes) {
  if (bytes.find('\0') != std::string_view::npos) return true;
  const std::string_view last = text::TrimBlanks(bytes.substr(bytes.find_last_of("\r\n") + 1));
  if (last.empty() || last.starts_with(';')) return false;
  return last.find(last.starts_with('[') ? ']' : '=') == std::string_view::npos;
}

std::optional<IniText> ReadSettings(const Program& program, std::error_code& fault) {
  auto text = ReadIniText(program.File("Server.ini"), fault);
  if (!text || !AreTorn(text->Bytes())) return text;
  fault = TornSettings();
  return std::nullopt;
}

}  // namespace settings
