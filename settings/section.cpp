#include "settings/section.h"

#include "platform/native_path.h"
#include "platform/system_message.h"
#include "settings/ini_file.h"
#include "settings/server_ini.h"
#include "text/conversions.h"
#include "text/strings.h"

namespace settings {

Section::Section(const Program& program, std::string_view section)
    : program_(program), section_(section), text_(ReadSettings(program, fault_)) {
  if (fault_) {
    program_.errors.LogError("Server.ini [" + section_ +
                             "]: cannot be read: " + platform::SystemMessage(fault_));
  }
}

std::string Section::Text(std::string_view key) const {
  return text_ ? ValueIn(*text_, section_, key) : std::string();
}

std::string Section::Path(std::string_view key) const {
  const std::string path = Text(key);
  const bool isRelative = path.starts_with("./") || path.starts_with(".\\");
  if (!isRelative) return platform::PathTextFromUser(path);
  // The same file serves both systems.
  return program_.File(text::ReplaceAll(std::string_view(path).substr(2), "/", "\\"));
}

bool Section::Read(std::string_view key, std::int16_t& value) const {
  const std::string text = Text(key);
  const auto number = text::ToInt16(text);
  if (!number) return Refuse(key, text);
  value = *number;
  return true;
}

bool Section::Read(std::string_view key, bool& value) const {
  const std::string text = Text(key);
  const auto boolean = text::ToBoolean(text);
  if (!boolean) return Refuse(key, text);
  value = *boolean;
  return true;
}

bool Section::Refuse(std::string_view key, std::string_view text) const {
  program_.errors.LogError("Server.ini [" + section_ + "] " + std::string(key) +
                           ": cannot convert \"" + std::string(text) + "\"");
  return false;
}

}  // namespace settings
