#include "settings/manager_password.h"

#include <array>

#include "files/files.h"
#include "settings/application_settings.h"
#include "text/code_page.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace settings {
namespace {

constexpr std::string_view kSection = "ManagerPwd";
constexpr std::string_view kKey = "PWD";
constexpr std::string_view kBuiltInPassword = "739205";

constexpr std::size_t kNameWidth = 20;
constexpr std::size_t kPasswordWidth = 30;
constexpr std::size_t kRecordSize = kNameWidth + kPasswordWidth;

std::string UserFile(const Program& program) { return program.File("ETUser.dzt"); }

std::string Field(std::string_view text, std::size_t width) {
  std::string field = text::ToSystem(text);
  field.resize(width, ' ');
  return field;
}

std::string FieldText(std::string_view field) { return text::FromSystem(text::TrimBlanks(field)); }

}  // namespace

std::string ManagerPassword(const Program& program) {
  return GetSetting(program.executable, kSection, kKey, "");
}

void SetManagerPassword(const Program& program, std::string_view password) {
  const bool wasSet = !ManagerPassword(program).empty();
  SaveSetting(program.executable, kSection, kKey, password);
  if (password.empty()) {
    // Without a password set before, the user file was not written here and is kept.
    if (wasSet) files::RemoveFile(UserFile(program));
  } else {
    files::ReplaceContent(UserFile(program),
                          Field(kManagerName, kNameWidth) + Field(password, kPasswordWidth));
  }
}

std::string FittingManagerPassword(std::string_view password) {
  std::size_t end = 0;
  while (end < password.size()) {
    const std::size_t next = text::CharacterEnd(password, end);
    if (text::ToSystem(password.substr(0, next)).size() > kPasswordWidth) break;
    end = next;
  }
  return std::string(password.substr(0, end));
}

bool CheckUser(const Program& program, std::string_view userName, std::string_view password) {
  platform::File file = files::OpenIfExists(UserFile(program));
  if (!file.IsOpen()) return password == kBuiltInPassword;
  std::array<char, kRecordSize> bytes;
  std::error_code error;
  if (file.Read(bytes.data(), bytes.size(), error) < bytes.size()) return false;
  const std::string_view record(bytes.data(), bytes.size());
  return FieldText(record.substr(0, kNameWidth)) == userName &&
         FieldText(record.substr(kNameWidth)) == password;
}

}  // namespace settings
