#include "ui/dialogs/tip_of_the_day.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dcclient.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <algorithm>
#include <sstream>
#include <utility>

#include "files/files.h"
#include "files/missing.h"
#include "platform/system_message.h"
#include "settings/user_state.h"
#include "text/code_page.h"
#include "text/line_breaks.h"
#include "text/printable_text.h"
#include "text/strings.h"
#include "ui/controls/art.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/copying.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kPictureSize = 48;
const wxSize kTipSize(360, 84);
constexpr double kHeadingFactor = 1.2;

// One for each day of some years, and none longer than the box can show.
constexpr std::size_t kMostTips = 1000;
constexpr std::size_t kLongestTip = 400;  // bytes

constexpr const char* kSection = "Tips";
constexpr const char* kShow = "Show";
constexpr const char* kNext = "Next";

}  // namespace

std::vector<std::string> frmTip::ReadTips(const settings::Program& program) {
  std::vector<std::string> tips;
  std::error_code error;
  const std::string bytes = files::ReadFile(program.File("TIPOFDAY.TXT"), error);
  if (error && !files::IsMissing(error)) {
    program.errors.LogError("TIPOFDAY.TXT: " + platform::SystemMessage(error));
  }
  std::istringstream lines(text::DecodeFile(bytes));
  for (std::string line; tips.size() < kMostTips && std::getline(lines, line);) {
    if (line.ends_with('\r')) line.pop_back();
    std::replace(line.begin(), line.end(), '\t', ' ');
    const std::string_view tip = text::TrimBlanks(line);
    if (tip.empty() || tip.starts_with('#')) continue;
    tips.push_back(text::Printable(tip, kLongestTip));
  }
  return tips;
}

void frmTip::ShowUnlessTurnedOff(wxWindow* parent, const settings::Program& program) {
  if (settings::Remembered(kSection, kShow).value_or(1) != 0) ShowNext(parent, program);
}

bool frmTip::ShowNext(wxWindow* parent, const settings::Program& program) {
  if (wxWindow* open = wxWindow::FindWindowByName("frmTip", parent)) {
    open->Raise();
    return true;
  }
  std::vector<std::string> tips = ReadTips(program);
  if (tips.empty()) return false;
  return (new frmTip(parent, std::move(tips)))->Show();
}

void frmTip::Leave(wxWindow* parent) {
  if (wxWindow* open = wxWindow::FindWindowByName("frmTip", parent)) open->Destroy();
}

frmTip::frmTip(wxWindow* parent, std::vector<std::string> tips)
    : wxDialog(parent, wxID_ANY, Shown("每日提示")), tips_(std::move(tips)) {
  Named(this, "frmTip");
  lblTip_ = Named(new wxStaticText(this, wxID_ANY, "", wxDefaultPosition, FromDIP(kTipSize),
                                   wxST_NO_AUTORESIZE),
                  "lblTip");
  chkShowTips_ = MakeCheckBox(this, "chkShowTips", "启动时显示提示(&S)");
  chkShowTips_->SetValue(settings::Remembered(kSection, kShow).value_or(1) != 0);
  chkShowTips_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) {
    settings::Remember(kSection, kShow, chkShowTips_->IsChecked() ? 1 : 0);
  });
  wxButton* next = MakeActionButton(this, "cmdNextTip", "下一条(&N)", [this] { ShowTip(); });
  wxButton* close = MakeButton(this, "cmdCloseTip", "关闭(&C)", wxID_CANCEL);
  close->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { End(); });
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { End(); });

  const int edge = FromDIP(kEdge);
  auto* texts = new wxBoxSizer(wxVERTICAL);
  texts->Add(MakeHeading(this, "您知道吗？", kHeadingFactor));
  texts->Add(lblTip_, wxSizerFlags(1).Expand().Border(wxTOP, FromDIP(kGap)));
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticBitmap(this, wxID_ANY, Art("tip", kPictureSize)),
           wxSizerFlags().Border(wxRIGHT, edge));
  row->Add(texts, wxSizerFlags(1).Expand());
  auto* buttons = new wxBoxSizer(wxHORIZONTAL);
  buttons->Add(chkShowTips_, wxSizerFlags(1).CentreVertical());
  buttons->Add(next, wxSizerFlags().Border(wxRIGHT, FromDIP(kGap)));
  buttons->Add(close);
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(row, wxSizerFlags(1).Expand().Border(wxALL, edge));
  column->Add(buttons, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, edge));
  LetCopyTexts(*this);
  SetSizerAndFit(column);
  SetEscapeId(wxID_CANCEL);
  close->SetDefault();
  ShowAsMain(*close);
  close->SetFocus();
  ShowTip();
  CentreOnParent();
}

void frmTip::ShowTip() {
  const int count = static_cast<int>(tips_.size());
  const int next = settings::Remembered(kSection, kNext).value_or(0);
  const int index = next >= 0 && next < count ? next : 0;
  settings::Remember(kSection, kNext, (index + 1) % count);
  const int width = FromDIP(kTipSize.x);
  const std::vector<std::string> lines = text::BrokenIntoLines(
      tips_[static_cast<std::size_t>(index)],
      [&](const std::string& line) { return lblTip_->GetTextExtent(Shown(line)).x <= width; });
  const wxString tip = Shown(text::Joined(lines, "\n"));
  lblTip_->SetLabelText(tip);
  const int height = wxClientDC(lblTip_).GetMultiLineTextExtent(tip).y;
  lblTip_->SetMinSize({width, std::max(height, FromDIP(kTipSize.y))});
  GrowToFit(*lblTip_);
}

void frmTip::End() { Destroy(); }

}  // namespace ui
