#include "ftp/ftp_options_entry.h"

#include "platform/native_path.h"
#include "text/strings.h"

namespace ModFtp {
namespace {

bool IsBlank(const std::string& text) { return text::TrimBlanks(text).empty(); }

}  // namespace

FtpOptionsEntry EntryOf(const FtpOptions& options) {
  return {.localIP = options.ftpLocalAddress,
          .port = std::to_string(options.ftpPort),
          .domain = options.ftpDomain,
          .root = platform::PathTextForUser(options.ftpRoot),
          .uploadDir = platform::PathTextForUser(options.uploadDir),
          .rights = settings::ToAccessRights(options.FtpRights)};
}

std::optional<FtpOptionsFault> FindFault(const FtpOptionsEntry& entry) {
  if (IsBlank(entry.domain)) return FtpOptionsFault::kNoDomain;
  if (IsBlank(entry.root)) return FtpOptionsFault::kNoRoot;
  if (IsBlank(entry.uploadDir)) return FtpOptionsFault::kNoUploadDir;
  return std::nullopt;
}

void WriteSettings(settings::Change& change, const FtpOptionsEntry& entry) {
  const settings::SectionChange settings = change.In("FtpServer Options");
  settings.Write("IP", entry.localIP);
  settings.Write("FtpPort", entry.port);
  settings.Write("DNS", entry.domain);
  settings.Write("FtpServer Root", entry.root);
  settings.Write("FtpServer UploadDir", entry.uploadDir);
  settings::WriteAccessRights(settings, entry.rights);
}

}  // namespace ModFtp
