#include "ftp/file_operations.h"

#include "files/missing.h"
#include "ftp/command_text.h"
#include "ftp/folder_walk.h"
#include "ftp/path_mapping.h"
#include "net/turn.h"
#include "platform/system_message.h"
#include "text/path_text.h"
#include "text/strings.h"
#include "text/wildcards.h"

namespace ModFtp {
namespace {

using net::ActivityEnd;
using net::Task;

// A relative CWD appends to the current directory. No system knows a path this long.
constexpr std::size_t kLongestDirectory = 32768;

ActivityEnd EndOf(const std::error_code& error) {
  if (!error) return ActivityEnd::kComplete;
  return files::IsMissing(error) ? ActivityEnd::kNotFound : ActivityEnd::kFailed;
}

bool HasWildcard(std::string_view name) { return name.find_first_of("*?") != std::string::npos; }

// Deletes the files of `folder` that match, but no folders. Stops at the first failure.
Task<std::error_code> DeleteMatches(const files::ClientFiles& files, std::string folder,
                                    std::string pattern, std::shared_ptr<MemoryShare> memory) {
  Task<std::optional<SortedEntries>> reading = ReadSorted(files, folder, memory);
  std::optional<SortedEntries> entries = co_await reading;
  std::error_code result = std::make_error_code(std::errc::no_such_file_or_directory);
  if (!entries) co_return result;
  net::Turn turn;
  while (const std::optional<platform::DirectoryEntry> entry = entries->Next()) {
    if (!entry->isFolder && text::MatchesWildcard(entry->name, pattern)) {
      result = files.RemoveFile(folder + entry->name);
      if (result) co_return result;
    }
    if (!turn.IsOver()) continue;
    co_await net::YieldToEvents();
    turn.Renew();
  }
  co_return result;
}

// `path` may hold wildcards after its last separator.
Task<std::error_code> DeleteFiles(const files::ClientFiles& files, std::string path,
                                  std::shared_ptr<MemoryShare> memory) {
  const std::size_t separator = path.find_last_of("\\/");
  const std::size_t nameBegin = separator == std::string::npos ? 0 : separator + 1;
  const std::string pattern = path.substr(nameBegin);
  if (!HasWildcard(pattern)) co_return files.RemoveFile(path);
  Task<std::error_code> deleting = DeleteMatches(files, path.substr(0, nameBegin), pattern, memory);
  const std::error_code error = co_await deleting;
  co_return error;
}

}  // namespace

void FileOperations::SettleDirectory(int slot) {
  if (!files_.AreConfined()) return;
  FtpSession& session = sessions_[slot];
  session.physicalDir = files_.Settled(std::move(session.physicalDir));
  session.ftpDir = SeenPath(sessions_.shared.ftpRoot, session.physicalDir);
  if (session.ftpDir != "/") session.ftpDir = "/" + session.ftpDir + "/";
}

bool FileOperations::ChangeFtpDirectory(int slot, const std::string& text) {
  constexpr std::size_t kBareCommand = 5;
  std::string& root = sessions_.StateOf(slot).ftpRoot;
  root = ModCommon::AddSlash(root);
  if (CharacterCount(text) <= kBareCommand) return true;
  const std::string argument = text::ReplaceAll(FromPosition(text, kAfterThreeLetters), "\r\n", "");
  FtpSession& session = sessions_[slot];
  CurrentDirectory changed = ChangedDirectory(root, session.physicalDir, argument);
  if (changed.physicalDir.size() > kLongestDirectory) return false;
  session.physicalDir = std::move(changed.physicalDir);
  session.ftpDir = std::move(changed.ftpDir);
  return true;
}

// A leading "/" means nothing special here: the name is below the current directory.
Change FileOperations::MakeFtpDirectory(int slot, const std::string& text) {
  const std::optional<std::string> name = CutArgument(text, kAfterThreeLetters);
  if (!name) return {};
  Change change = {PathFromDirectory(sessions_[slot].physicalDir, *name), ActivityEnd::kRefused};
  if (rule_.MayChange(change.path)) change.end = EndOf(files_.CreateFolder(change.path));
  return change;
}

Change FileOperations::RemoveFtpDirectory(int slot, const std::string& text) {
  std::optional<std::string> path = PathOf(slot, text, kAfterThreeLetters);
  if (!path) return {};
  Change change = {std::move(*path), ActivityEnd::kRefused};
  if (!rule_.MayChange(change.path)) return change;
  change.end = ActivityEnd::kComplete;
  if (files_.FolderExists(change.path)) change.end = EndOf(files_.RemoveFolder(change.path));
  return change;
}

Task<Change> FileOperations::DeleteFtpFile(int slot, std::string text) {
  std::optional<std::string> path = PathOf(slot, text, kAfterFourLetters);
  if (!path) co_return Change{};
  Change change = {std::move(*path), ActivityEnd::kRefused};
  if (!rule_.MayChange(change.path)) co_return std::move(change);
  Task<std::error_code> deleting =
      DeleteFiles(files_, change.path, std::make_shared<MemoryShare>(memory_));
  const std::error_code error = co_await deleting;
  change.end = EndOf(error);
  if (error) change.reason = platform::SystemMessage(error);
  co_return std::move(change);
}

bool FileOperations::RenameFrom(int slot, const std::string& text) {
  const std::optional<std::string> path = PathOf(slot, text, kAfterFourLetters);
  if (!path) return false;
  sessions_[slot].renameFrom = *path;
  return rule_.MayChange(*path);
}

Change FileOperations::RenameTo(int slot, const std::string& text) {
  std::optional<std::string> target = PathOf(slot, text, kAfterFourLetters);
  if (!target) return {};
  Change change = {std::move(*target), ActivityEnd::kRefused};
  const std::string& from = sessions_[slot].renameFrom;
  if (!rule_.MayChange(change.path) || !rule_.MayMove(from)) return change;
  change.end = EndOf(files_.Rename(from, change.path));
  return change;
}

// None if the text is too short to hold a name and a line end.
std::optional<std::string> FileOperations::PathOf(int slot, const std::string& text,
                                                  std::size_t position) const {
  const std::optional<std::string> name = CutArgument(text, position);
  if (!name) return std::nullopt;
  return LocalPath(sessions_.StateOf(slot).ftpRoot, sessions_[slot].physicalDir, *name);
}

}  // namespace ModFtp
