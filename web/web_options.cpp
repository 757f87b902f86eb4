#include "web/web_options.h"

#include "core/service_environment.h"
#include "files/files.h"
#include "settings/ini_file.h"
#include "settings/section.h"
#include "text/conversions.h"

namespace ModWeb {
namespace {

using settings::Form;
using settings::Refusal;

bool IsSet(const std::string& text) { return text::ToBoolean(text).value_or(false); }

bool ProgramsAreForbidden(const settings::Program& program) {
  const std::string file = program.File("EnabalExecute.txt");
  if (!ModCommon::FileExists(file)) return true;
  return IsSet(ModINIOP::ReadIni(file, "应用程序许可", "EnabalExecute"));
}

}  // namespace

bool WebOptions::LoadWebOptions(const settings::Program& program, const std::string& localAddress) {
  const settings::Section section(program, kSettingsSection);
  settingsFault = section.Fault();
  if (!settingsFault) {
    if (section.FileExists()) {
      settings::Load(section, Describe());
      WebLocalIP = localAddress;
    } else {
      SetDefaults(program);
    }
    answers = LoadAnswerOptions(program, section);
  }
  LoadDefaultPages(program, DefaultPages);
  // Whatever the file says: every loading turns the search for default documents on.
  StartDefaultPage = true;
  FirstDefaultPage = DefaultPages[0];
  return true;
}

void WebOptions::SetDefaults(const settings::Program& program) {
  settings::SetDefaults(program, Describe());
}

settings::Table WebOptions::Describe() {
  const Refusal noRoot{3, Refusal::If::kBlank, "请指定WEB主目录！"};
  const Refusal noPort{1, Refusal::If::kBlank, "请指定TCP端口！"};
  const Refusal noDomain{2, Refusal::If::kEmpty, "请指定本地域名", Refusal::Icon::kInformation};
  return {kSettingsSection,
          {{kRootKey, Form::kPath, &WebRootDir, "wwwroot", "txtWebRoot", noRoot},
           {"WebServerIP", Form::kAddress, &WebLocalIP, "127.0.0.1", "txtWebIP"},
           {"TCPPort", Form::kNumber, &WebPort, "80", "txtWebPort", noPort},
           {"DNS", Form::kText, &WebDomain, core::kDefaultDomain, "txtWebAddress", noDomain},
           {"StartDefaultPage", Form::kCheck, &StartDefaultPage, "1", "chkDefaultFile"},
           {"Read", Form::kCheck, &WebRights[0], "1", "chkRead"},
           {"Write", Form::kCheck, &WebRights[1], "0", "chkWrite"},
           {"ContralAll", Form::kCheck, &WebRights[2], "0", "chkContralAll"},
           {"optNoApp", Form::kBoolean, &AppOptions[0], "False", "optAppNone"},
           {"optAppDone", Form::kBoolean, &AppOptions[1], "True", "OptAppDone"}}};
}

settings::Entry WebOptions::EntryToShow(const settings::Program& program) const {
  WebOptions shown = *this;
  const bool forbidden = !MayRunPrograms() && ProgramsAreForbidden(program);
  shown.AppOptions[0] = text::BooleanText(forbidden);
  return settings::EntryOf(shown.Describe());
}

bool WebOptions::MayRead() const { return IsSet(WebRights[0]); }

bool WebOptions::MayRunPrograms() const { return IsSet(AppOptions[1]); }

}  // namespace ModWeb
