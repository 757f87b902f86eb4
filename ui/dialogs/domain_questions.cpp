#include "ui/dialogs/domain_questions.h"

#include "settings/change.h"
#include "settings/section.h"
#include "ui/dialogs/questions.h"
#include "ui/dialogs/save_report.h"

namespace ui {
namespace {

struct Question {
  const char* section;
  const char* prompt;
  const char* title;
};

const Question& QuestionOf(core::ServiceKind service) {
  static constexpr Question kWeb{"WebServer Options", "请输入Web域名：", "Web域名设置"};
  static constexpr Question kFtp{"FtpServer Options", "请输入FTP域名：", "FTP域名设置"};
  static constexpr Question kMail{"MailServer Options", "请输入Email域名：", "Email域名设置"};
  switch (service) {
    case core::ServiceKind::kWeb:
      return kWeb;
    case core::ServiceKind::kFtp:
      return kFtp;
    case core::ServiceKind::kMail:
      break;
  }
  return kMail;
}

}  // namespace

std::optional<std::string> AskDomain(wxWindow* parent, const settings::Program& program,
                                     core::ServiceKind service) {
  const Question& question = QuestionOf(service);
  const settings::Section settings(program, question.section);
  auto domain = AskText(parent, question.prompt, question.title, settings.Text("DNS"));
  if (!domain) return std::nullopt;
  settings::Change change(program);
  change.In(question.section).Write("DNS", *domain);
  return IsSaved(parent, program, change.Save(), question.title) ? domain : std::nullopt;
}

}  // namespace ui
