#include "web/web_options.h"

#include <string_view>

#include "core/service_environment.h"
#include "files/files.h"
#include "files/missing.h"
#include "platform/system_message.h"
#include "settings/section.h"
#include "text/code_page.h"
#include "text/conversions.h"

namespace ModWeb {
namespace {

constexpr std::string_view kSection = "WebServer Options";

// Eleven names of any file system have less.
constexpr std::size_t kMostOfDefaultPages = 65536;

// Takes the next line, without its line end; false when there is none.
bool NextLine(std::string_view& text, std::string_view& line) {
  if (text.empty()) return false;
  const std::size_t end = text.find_first_of("\r\n");
  line = text.substr(0, end);
  if (end == std::string_view::npos) {
    text = {};
  } else {
    text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
  }
  return true;
}

}  // namespace

bool WebOptions::LoadWebOptions(const settings::Program& program, const std::string& localAddress) {
  const settings::Section settings(program, kSection);
  settingsFault = settings.Fault();
  if (!settingsFault) {
    if (settings.FileExists()) {
      ReadSettings(settings, localAddress);
    } else {
      SetDefaults(program);
    }
  }
  LoadDefaultPages(program);
  // Whatever the file said: the search for default documents is on after every loading.
  StartDefaultPage = true;
  FirstDefaultPage = DefaultPages[0];
  return true;
}

bool WebOptions::MayRead() const { return settings::ToAccessRights(WebRights).read; }

bool WebOptions::MayRunPrograms() const { return text::ToBoolean(AppOptions[1]).value_or(false); }

void WebOptions::ReadSettings(const settings::Section& settings, const std::string& localAddress) {
  WebRootDir = settings.Path("WebRootDir");
  WebDomain = settings.Text("DNS");
  settings.Read("TCPPort", WebPort);
  settings.Read("StartDefaultPage", StartDefaultPage);
  WebRights = settings::ReadAccessRights(settings);
  AppOptions = {settings.Text("optNoApp"), settings.Text("optAppDone")};
  WebLocalIP = localAddress;
}

void WebOptions::SetDefaults(const settings::Program& program) {
  WebRootDir = program.File("wwwroot");
  WebDomain = core::kDefaultDomain;
  WebLocalIP = "127.0.0.1";
  WebPort = 80;
  StartDefaultPage = true;
  WebRights = {"1", "0", "0"};
  AppOptions = {"False", "True"};
}

void WebOptions::LoadDefaultPages(const settings::Program& program) {
  const std::string file = program.File("IndexFN.Log");
  std::error_code error;
  const std::string content = text::DecodeFile(files::ReadFile(file, error, kMostOfDefaultPages));
  if (error && !files::IsMissing(error)) {
    program.errors.LogError("IndexFN.Log: " + platform::SystemMessage(error));
  }
  if (!ModCommon::FileExists(file)) {
    DefaultPages[0] = "index.htm";
    DefaultPages[1] = "default.htm";
    return;
  }
  // Entries beyond the last line keep what they held.
  std::string_view rest = content;
  std::string_view line;
  std::size_t index = 0;
  while (NextLine(rest, line)) {
    if (index == DefaultPages.size()) {
      program.errors.LogError("IndexFN.Log: more than 11 lines");
      return;
    }
    DefaultPages[index++] = line;
  }
}

}  // namespace ModWeb
