#include "ftp/ftp_options_entry.h"

#include "core/paths.h"
#include "platform/native_path.h"

namespace ModFtp {
namespace {

bool IsBlank(const std::string& text) { return core::TrimBlanks(text).empty(); }

}  // namespace

FtpOptionsEntry EntryOf(const FtpOptions& options) {
  return {.localIP = options.ftpLocalAddress,
          .port = std::to_string(options.ftpPort),
          .domain = options.ftpDomain,
          .root = platform::PathTextForUser(options.ftpRoot),
          .uploadDir = platform::PathTextForUser(options.uploadDir),
          .rights = core::ToAccessRights(options.FtpRights)};
}

std::optional<FtpOptionsFault> FindFault(const FtpOptionsEntry& entry) {
  if (IsBlank(entry.domain)) return FtpOptionsFault::kNoDomain;
  if (IsBlank(entry.root)) return FtpOptionsFault::kNoRoot;
  if (IsBlank(entry.uploadDir)) return FtpOptionsFault::kNoUploadDir;
  return std::nullopt;
}

void WriteSettings(core::SettingsChange& change, const FtpOptionsEntry& entry) {
  const core::SectionChange settings = change.In("FtpServer Options");
  settings.Write("IP", entry.localIP);
  settings.Write("FtpPort", entry.port);
  settings.Write("DNS", entry.domain);
  settings.Write("FtpServer Root", entry.root);
  settings.Write("FtpServer UploadDir", entry.uploadDir);
  core::WriteAccessRights(settings, entry.rights);
}

}  // namespace ModFtp
