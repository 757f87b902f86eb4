#include "mail/mail_accounts.h"

#include <algorithm>

#include "files/files.h"
#include "platform/system_message.h"
#include "settings/ini_change.h"
#include "settings/ini_file.h"
#include "text/file_name.h"
#include "text/path_text.h"
#include "text/strings.h"
#include "text/wildcards.h"

namespace ModMail {
namespace {

using ModCommon::AddSlash;

constexpr std::string_view kSection = "用户信息";
constexpr std::string_view kNameKey = "User";
constexpr std::string_view kPasswordKey = "Password";

std::string BoxOf(std::string_view mailRoot, std::string_view name) {
  return AddSlash(MailUserFolder(mailRoot) + std::string(name));
}

std::string UserInfo(std::string_view box) { return std::string(box) + "UserInfo.ini"; }

bool MakeFolder(std::string_view path) {
  return files::FolderExists(path) || !files::CreateFolder(path);
}

void DeleteContents(const std::string& folder, const files::ErrorLog& errors) {
  std::error_code error;
  for (const platform::DirectoryEntry& entry : files::ListFolder(folder, error)) {
    const std::string path = folder + entry.name;
    // A link to a folder is removed like an empty folder; its target is not ours.
    if (entry.isFolder && !files::RemoveFolder(path)) continue;
    if (entry.isFolder) DeleteContents(AddSlash(path), errors);
    error = entry.isFolder ? files::RemoveFolder(path) : files::RemoveFile(path);
    if (error) errors.LogError(path + ": " + platform::SystemMessage(error));
  }
}

}  // namespace

std::string MailUserFolder(std::string_view mailRoot) { return AddSlash(mailRoot) + "User\\"; }

bool IsAccountName(std::string_view name) {
  if (name.empty()) return true;
  if (name.size() > kLongestAccountName) return false;
  if (std::any_of(name.begin(), name.end(), text::IsForbiddenInFileNames)) return false;
  // Windows ignores dots and blanks at the end of a name.
  return name.find_first_not_of(". ") != std::string_view::npos;
}

std::vector<MailUser> ListMailUsers(std::string_view mailRoot) {
  std::vector<MailUser> users;
  std::error_code error;
  for (const platform::DirectoryEntry& entry : files::ListFolder(MailUserFolder(mailRoot), error)) {
    if (!entry.isFolder) continue;
    users.push_back({entry.name, ReadMailPassword(BoxOf(mailRoot, entry.name))});
  }
  return users;
}

std::size_t MessagesOf(std::string_view mailRoot, std::string_view name) {
  if (!MailUserExists(mailRoot, name)) return 0;
  std::error_code error;
  const auto entries = files::ListFolder(BoxOf(mailRoot, name), error);
  return static_cast<std::size_t>(
      std::count_if(entries.begin(), entries.end(), [](const platform::DirectoryEntry& entry) {
        return !entry.isFolder && text::MatchesWildcard(entry.name, "*.eml");
      }));
}

bool MailUserExists(std::string_view mailRoot, std::string_view name) {
  return !name.empty() && IsAccountName(name) && files::FolderExists(BoxOf(mailRoot, name));
}

std::string ReadMailPassword(std::string_view box) {
  return ModINIOP::ReadIni(UserInfo(box), kSection, kPasswordKey);
}

bool ChangeMailPassword(std::string_view mailRoot, const MailUser& user) {
  return MailUserExists(mailRoot, user.name) &&
         ModINIOP::WriteIni(UserInfo(BoxOf(mailRoot, user.name)), kSection, kPasswordKey,
                            user.password) != 0;
}

bool SaveMailUser(std::string_view mailRoot, const MailUser& user) {
  if (user.name.empty() || !IsAccountName(user.name)) return false;
  const std::string box = BoxOf(mailRoot, user.name);
  const bool made = MakeFolder(mailRoot) && MakeFolder(MailUserFolder(mailRoot)) && MakeFolder(box);
  if (!made) return false;
  settings::IniChange change(UserInfo(box));
  change.Set(kSection, kNameKey, user.name);
  change.Set(kSection, kPasswordKey, user.password);
  return !change.Save();
}

void RemoveMailUser(std::string_view mailRoot, std::string_view name,
                    const files::ErrorLog& errors) {
  if (!MailUserExists(mailRoot, name)) return;
  const std::string folder = MailUserFolder(mailRoot) + std::string(name);
  // The mailbox itself may be a link.
  if (!files::RemoveFolder(folder)) return;
  DeleteContents(AddSlash(folder), errors);
  files::RemoveFolder(folder);
}

std::string CleanText(std::string_view text) {
  std::string cleaned(text);
  std::erase_if(cleaned, text::IsForbiddenInFileNames);
  const std::string_view trimmed = text::TrimBlanks(cleaned);
  return trimmed == "." || trimmed == ".." ? std::string() : std::string(trimmed);
}

}  // namespace ModMail
