#include "ui/dialogs/answer_fields.h"

#include <wx/checkbox.h>
#include <wx/textctrl.h>

#include <string>

#include "core/start_diagnosis.h"
#include "text/conversions.h"
#include "text/strings.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/settings_form.h"

namespace ui {
namespace {

using ModWeb::AnswerOptions;

constexpr const char* kExplanation =
    "手机、平板和各种浏览器在任何端口都能打开网页，视频可以跳着看，\n"
    "下载可以续传。不选则只发送网页内容，浏览器只在端口 80 上显示。";
constexpr const char* kLimitRange = "1 到 64 的数字";
constexpr const char* kSpeedRange = "0 到 32767 的数字，或者不填";

bool IsBlank(const std::string& typed) { return text::TrimBlanks(typed).empty(); }

std::optional<std::int16_t> LimitOf(const std::string& typed) {
  const auto limit = text::ToInt16(typed);
  return limit && *limit >= 1 && *limit <= ModWeb::kLargestBodyLimit ? limit : std::nullopt;
}

std::optional<std::int16_t> SpeedOf(const std::string& typed) {
  const auto speed = text::ToInt16(typed);
  return speed && *speed >= 0 ? speed : std::nullopt;
}

std::optional<std::string> ComplaintAboutLimit(const std::string& typed) {
  if (LimitOf(typed)) return std::nullopt;
  return std::string("应为 ") + kLimitRange + "。";
}

std::optional<std::string> ComplaintAboutSpeed(const std::string& typed) {
  if (IsBlank(typed) || SpeedOf(typed)) return std::nullopt;
  return std::string("应为 ") + kSpeedRange + "。";
}

std::string RemarkOnSpeed(const std::string& typed) {
  if (IsBlank(typed)) return "不填：照常，每秒大约 200 KB，看视频嫌慢；0：不限制";
  const int speed = SpeedOf(typed).value_or(0);
  if (speed == 0) return "不限制：网络有多快就多快";
  return "每位访问者每秒最多 " + std::to_string(speed) + " KB";
}

void Refuse(wxTextCtrl& field, const std::string& text) {
  Warn(wxGetTopLevelParent(&field), text);
  ShowPageOf(field);
  field.SetFocus();
  field.SelectAll();
}

}  // namespace

AnswerFields::AnswerFields(wxWindow* parent, FieldRows& rows) {
  const std::string caption = std::string(core::kForBrowsers) + "(&H)";
  const ExplainedBox tick =
      MakeExplainedBox(parent, "chkAnswersHttp", caption.c_str(), kExplanation);
  chkAnswersHttp = tick.box;
  chkAnswersHttp->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { EnableParts(); });
  rows.AddAcross(tick.sizer);
  txtBodyLimit = rows.Add("txtBodyLimit", "表单最大（MB）(&M)：");
  rows.AddNote("lblBodyLimitNote", kLimitRange, ComplaintAboutLimit);
  txtSpeed = rows.Add("txtSpeed", "大文件每秒最多（KB）(&K)：");
  rows.AddNote("lblSpeedNote", RemarkOnSpeed, ComplaintAboutSpeed);
}

void AnswerFields::Show(const AnswerOptions& options) {
  chkAnswersHttp->SetValue(options.http);
  txtBodyLimit->SetValue(std::to_string(options.bodyLimit));
  txtSpeed->SetValue(options.speed ? std::to_string(*options.speed) : "");
  EnableParts();
}

std::optional<AnswerOptions> AnswerFields::Entered(const AnswerOptions& former) const {
  AnswerOptions entered = {.http = chkAnswersHttp->GetValue(), .bodyLimit = former.bodyLimit};
  if (entered.http) {
    const auto limit = LimitOf(Typed(txtBodyLimit->GetValue()));
    if (!limit) {
      Refuse(*txtBodyLimit, std::string("表单最大应为 ") + kLimitRange + "！");
      return std::nullopt;
    }
    entered.bodyLimit = *limit;
  }
  const std::string speed = Typed(txtSpeed->GetValue());
  entered.speed = SpeedOf(speed);
  if (!entered.speed && !IsBlank(speed)) {
    Refuse(*txtSpeed, std::string("大文件每秒最多应为 ") + kSpeedRange + "！");
    return std::nullopt;
  }
  return entered;
}

void AnswerFields::EnableParts() { txtBodyLimit->Enable(chkAnswersHttp->GetValue()); }

}  // namespace ui
