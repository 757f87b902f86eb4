#include "ui/dialogs/domain_questions.h"

#include <array>
#include <string_view>

#include "ftp/ftp_options.h"
#include "mail/mail_options.h"
#include "settings/change.h"
#include "settings/section.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/save_report.h"
#include "web/web_options.h"

namespace ui {
namespace {

struct Question {
  std::string_view section;
  const char* prompt;
  const char* title;
};

// By the index of the service.
constexpr std::array<Question, 3> kQuestions = {{
    {ModWeb::kSettingsSection, "请输入Web域名：", "Web域名设置"},
    {ModFtp::kSettingsSection, "请输入FTP域名：", "FTP域名设置"},
    {ModMail::kSettingsSection, "请输入Email域名：", "Email域名设置"},
}};

}  // namespace

std::optional<std::string> AskDomain(wxWindow* parent, const settings::Program& program,
                                     core::ServiceKind service) {
  const Question& question = kQuestions[core::IndexOf(service)];
  const settings::Section settings(program, question.section);
  auto domain = AskText(parent, question.prompt, question.title, settings.Text("DNS"));
  if (!domain) return std::nullopt;
  settings::Change change(program);
  change.In(question.section).Write("DNS", *domain);
  return IsSaved(parent, program, change.Save(), question.title) ? domain : std::nullopt;
}

}  // namespace ui
