#include "web/web_options_entry.h"

#include "files/files.h"
#include "files/missing.h"
#include "platform/native_path.h"
#include "settings/ini_file.h"
#include "text/code_page.h"
#include "text/conversions.h"
#include "text/strings.h"

namespace ModWeb {
namespace {

bool IsSet(const std::string& text) { return text::ToBoolean(text).value_or(false); }

bool IsBlank(const std::string& text) { return text::TrimBlanks(text).empty(); }

bool ProgramsAreSwitchedOff(const settings::Program& program) {
  const std::string file = program.File("EnabalExecute.txt");
  if (!ModCommon::FileExists(file)) return true;
  return IsSet(ModINIOP::ReadIni(file, "应用程序许可", "EnabalExecute"));
}

std::vector<std::string> NamesIn(const std::array<std::string, 11>& pages) {
  std::vector<std::string> names(pages.begin(), pages.end());
  std::erase(names, "");
  return names;
}

}  // namespace

WebOptionsEntry EntryOf(const WebOptions& options) {
  return {.rootDir = platform::PathTextForUser(options.WebRootDir),
          .localIP = options.WebLocalIP,
          .port = std::to_string(options.WebPort),
          .domain = options.WebDomain,
          .startDefaultPage = options.StartDefaultPage,
          .rights = settings::ToAccessRights(options.WebRights),
          .noPrograms = IsSet(options.AppOptions[0]),
          .programs = IsSet(options.AppOptions[1]),
          .documents = NamesIn(options.DefaultPages)};
}

WebOptionsEntry EntryToShow(const settings::Program& program, const WebOptions& options) {
  WebOptionsEntry entry = EntryOf(options);
  entry.noPrograms = !entry.programs && ProgramsAreSwitchedOff(program);
  return entry;
}

std::optional<WebOptionsFault> FindFault(const WebOptionsEntry& entry) {
  if (IsBlank(entry.port)) return WebOptionsFault::kNoPort;
  if (entry.domain.empty()) return WebOptionsFault::kNoDomain;
  if (IsBlank(entry.rootDir)) return WebOptionsFault::kNoRoot;
  return std::nullopt;
}

void WriteSettings(settings::Change& change, const WebOptionsEntry& entry) {
  const settings::SectionChange settings = change.In("WebServer Options");
  settings.Write("WebRootDir", entry.rootDir);
  settings.Write("WebServerIP", entry.localIP);
  settings.Write("TCPPort", entry.port);
  settings.Write("DNS", entry.domain);
  settings.Write("StartDefaultPage", text::CheckText(entry.startDefaultPage));
  settings::WriteAccessRights(settings, entry.rights);
  settings.Write("optNoApp", text::BooleanText(entry.noPrograms));
  settings.Write("optAppDone", text::BooleanText(entry.programs));
}

std::error_code SaveDefaultPages(const settings::Program& program,
                                 const std::vector<std::string>& documents) {
  const std::string file = program.File("IndexFN.Log");
  std::string lines;
  for (const std::string& document : documents) lines += document + "\r\n";
  if (!documents.empty()) return files::ReplaceContent(file, text::EncodeFile(lines));
  const std::error_code error = files::RemoveFile(file);
  return files::IsMissing(error) ? std::error_code() : error;
}

}  // namespace ModWeb
