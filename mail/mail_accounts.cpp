#include "mail/mail_accounts.h"

#include <algorithm>
#include <utility>

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
constexpr std::string_view kHashKey = "PasswordHash";

std::string BoxOf(std::string_view mailRoot, std::string_view name) {
  return AddSlash(MailUserFolder(mailRoot) + std::string(name));
}

std::string UserInfo(std::string_view box) { return std::string(box) + "UserInfo.ini"; }

StoredPassword PasswordIn(std::string_view box) {
  std::error_code error;
  const auto text = settings::ReadIniText(UserInfo(box), error);
  if (!text) return {};
  return {.plain = settings::ValueIn(*text, kSection, kPasswordKey),
          .hash = settings::ValueIn(*text, kSection, kHashKey)};
}

// A file that has never had a hash gets no line for one.
std::error_code SetPassword(settings::IniChange& change, const std::string& password,
                            PasswordForm form) {
  std::error_code error;
  const bool isHashed = form == PasswordForm::kHashed;
  const std::string hash = isHashed ? HashOfPassword(password, error) : std::string();
  if (error) return error;
  change.Set(kSection, kPasswordKey, isHashed ? std::string() : password);
  if (isHashed || change.Find(kSection, kHashKey)) change.Set(kSection, kHashKey, hash);
  return {};
}

std::error_code MakeFolder(std::string_view path) {
  return files::FolderExists(path) ? std::error_code() : files::CreateFolder(path);
}

std::error_code MakeBox(std::string_view mailRoot, std::string_view name) {
  for (const std::string& folder :
       {std::string(mailRoot), MailUserFolder(mailRoot), BoxOf(mailRoot, name)}) {
    if (const std::error_code error = MakeFolder(folder)) return error;
  }
  return {};
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

std::vector<std::string> MailUserNames(std::string_view mailRoot) {
  std::vector<std::string> names;
  std::error_code error;
  for (platform::DirectoryEntry& entry : files::ListFolder(MailUserFolder(mailRoot), error)) {
    if (entry.isFolder) names.push_back(std::move(entry.name));
  }
  return names;
}

std::vector<MailUser> ListMailUsers(std::string_view mailRoot) {
  std::vector<MailUser> users;
  for (std::string& name : MailUserNames(mailRoot)) {
    const StoredPassword stored = PasswordIn(BoxOf(mailRoot, name));
    const bool isHashed = stored.plain.empty() && !stored.hash.empty();
    users.push_back({std::move(name), stored.plain, isHashed});
  }
  return users;
}

std::size_t MessagesOf(std::string_view mailRoot, std::string_view name) {
  if (!MailUserExists(mailRoot, name)) return 0;
  constexpr std::size_t kStep = 1000;
  std::error_code error;
  std::vector<platform::DirectoryEntry> entries;
  std::ptrdiff_t messages = 0;
  // Not sorted, which would take most of the time.
  platform::DirectoryReader folder = files::ReadFolder(BoxOf(mailRoot, name), error);
  do {
    entries.clear();
    if (!error) folder.Read(kStep, entries, error);
    messages += std::count_if(entries.begin(), entries.end(), [](const auto& entry) {
      return !entry.isFolder && text::MatchesWildcard(entry.name, "*.eml");
    });
  } while (!entries.empty());
  return static_cast<std::size_t>(messages);
}

bool MailUserExists(std::string_view mailRoot, std::string_view name) {
  return !name.empty() && IsAccountName(name) && files::FolderExists(BoxOf(mailRoot, name));
}

std::string ReadMailPassword(std::string_view box) {
  return ModINIOP::ReadIni(UserInfo(box), kSection, kPasswordKey);
}

StoredPassword ReadStoredPassword(std::string_view mailRoot, std::string_view name) {
  return MailUserExists(mailRoot, name) ? PasswordIn(BoxOf(mailRoot, name)) : StoredPassword();
}

std::error_code ChangeMailPassword(std::string_view mailRoot, const MailUser& user,
                                   PasswordForm form) {
  if (!MailUserExists(mailRoot, user.name)) {
    return std::make_error_code(std::errc::no_such_file_or_directory);
  }
  settings::IniChange change(UserInfo(BoxOf(mailRoot, user.name)));
  if (const std::error_code error = SetPassword(change, user.password, form)) return error;
  return change.Save();
}

// A mailbox whose name cannot be a user's has nobody who could sign in.
std::optional<MailUserFault> HashMailPasswords(std::string_view mailRoot) {
  std::optional<MailUserFault> fault;
  for (const MailUser& user : ListMailUsers(mailRoot)) {
    if (user.password.empty() || !IsAccountName(user.name)) continue;
    const std::error_code error = ChangeMailPassword(mailRoot, user, PasswordForm::kHashed);
    if (error && !fault) fault = {user.name, error};
  }
  return fault;
}

std::error_code SaveMailUser(std::string_view mailRoot, const MailUser& user, PasswordForm form) {
  if (user.name.empty() || !IsAccountName(user.name)) {
    return std::make_error_code(std::errc::invalid_argument);
  }
  if (const std::error_code error = MakeBox(mailRoot, user.name)) return error;
  settings::IniChange change(UserInfo(BoxOf(mailRoot, user.name)));
  change.Set(kSection, kNameKey, user.name);
  if (const std::error_code error = SetPassword(change, user.password, form)) return error;
  return change.Save();
}

void RemoveMailUser(std::string_view mailRoot, std::string_view name,
                    const files::ErrorLog& errors) {
  if (!MailUserExists(mailRoot, name)) return;
  RemoveFolderWhole(MailUserFolder(mailRoot) + std::string(name), errors);
}

void RemoveFolderWhole(const std::string& folder, const files::ErrorLog& errors) {
  if (!files::FolderExists(folder)) return;
  if (!files::RemoveFolder(folder)) return;
  DeleteContents(AddSlash(folder), errors);
  files::RemoveFolder(folder);
}

std::string CleanName(std::string_view text) {
  std::string cleaned(text);
  std::erase_if(cleaned, text::IsForbiddenInFileNames);
  const std::string_view trimmed = text::TrimBlanks(cleaned);
  return trimmed == "." || trimmed == ".." ? std::string() : std::string(trimmed);
}

std::string CleanPassword(std::string_view text) {
  std::string cleaned(text);
  std::erase_if(cleaned, text::IsControl);
  return std::string(text::TrimBlanks(cleaned));
}

}  // namespace ModMail
