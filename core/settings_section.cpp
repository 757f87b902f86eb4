#include "core/settings_section.h"

#include "core/conversions.h"
#include "core/ini_file.h"
#include "core/settings_file.h"
#include "platform/native_path.h"
#include "platform/system_message.h"

namespace core {

SettingsSection::SettingsSection(const Program& program, std::string_view section)
    : program_(program), section_(section), text_(ReadSettings(program, fault_)) {
  if (fault_) {
    program_.errors.LogError("Server.ini [" + section_ +
                             "]: cannot be read: " + platform::SystemMessage(fault_));
  }
}

std::string SettingsSection::Text(std::string_view key) const {
  return text_ ? ValueIn(*text_, section_, key) : std::string();
}

std::string SettingsSection::Path(std::string_view key) const {
  return platform::PathTextFromUser(Text(key));
}

bool SettingsSection::Read(std::string_view key, std::int16_t& value) const {
  const std::string text = Text(key);
  const auto number = ToInt16(text);
  if (!number) return Refuse(key, text);
  value = *number;
  return true;
}

bool SettingsSection::Read(std::string_view key, bool& value) const {
  const std::string text = Text(key);
  const auto boolean = ToBoolean(text);
  if (!boolean) return Refuse(key, text);
  value = *boolean;
  return true;
}

bool SettingsSection::Refuse(std::string_view key, std::string_view text) const {
  program_.errors.LogError("Server.ini [" + section_ + "] " + std::string(key) +
                           ": cannot convert \"" + std::string(text) + "\"");
  return false;
}

}  // namespace core
