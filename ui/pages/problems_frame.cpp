#include "ui/pages/problems_frame.h"

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "core/problem_text.h"
#include "files/files.h"
#include "files/log_tail.h"
#include "ui/controls/accessible.h"
#include "ui/controls/art.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"
#include "ui/pages/problem_list.h"

namespace ui {
namespace {

constexpr std::uint64_t kShownOfLog = 1U << 18;  // bytes
constexpr int kPictureSize = 48;
constexpr double kTitleFactor = 1.5;
constexpr int kListHeight = 140;  // minimum
constexpr int kDetailLines = 6;

// Never frozen: on GTK that takes the text away and brings it back, after which GTK crashes when
// the text is set before the control was drawn again.
class Detail : public wxTextCtrl {
 public:
  explicit Detail(wxWindow* parent)
      : wxTextCtrl(parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                   wxTE_MULTILINE | wxTE_READONLY) {}

 protected:
  void DoFreeze() override {}
  void DoThaw() override {}
};

std::string NoteText(std::size_t lines, bool isWhole) {
  if (lines == 0 && isWhole) return "没有记录到任何问题。";
  const std::string count = std::to_string(lines) + " 条";
  return isWhole ? "共 " + count + "，最新的在最上面。"
                 : "这里只有最后 " + count + "，最新的在最上面；更早的在记录文件里。";
}

}  // namespace

ProblemsFrame::ProblemsFrame(wxWindow* parent, const std::function<void()>& openLog)
    : Page(parent) {
  Named(this, "fraProblems");
  const int edge = FromDIP(kEdge);
  auto* column = new wxBoxSizer(wxVERTICAL);
  const wxSizerFlags row = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxTOP, edge);
  column->Add(MakeHeader(), row);
  note_ = Named(new wxStaticText(this, wxID_ANY, Shown(NoteText(0, true))), "lblProblems");
  auto* above = new wxBoxSizer(wxHORIZONTAL);
  above->Add(note_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, FromDIP(kGap)));
  above->Add(MakeActionButton(this, "cmdOpenErrorLog", "打开记录文件(&F)", openLog),
             wxSizerFlags().CentreVertical());
  column->Add(above, row);
  lstProblems = Named(new ProblemList(this), "lstProblems");
  lstProblems->SetMinSize({lstProblems->GetMinWidth(), FromDIP(kListHeight)});
  Describe(*lstProblems, kProblemsTitle, AccessibleRole::kTable);
  column->Add(lstProblems, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxTOP, edge));
  txtProblem = Named(new Detail(this), "txtProblem");
  txtProblem->SetMinSize({-1, kDetailLines * txtProblem->GetTextExtent(Shown("字")).y});
  Describe(*txtProblem, "所选的一条");
  column->Add(txtProblem, wxSizerFlags().Expand().Border(wxALL, edge));
  SetSizer(column);
  for (const auto& event : {wxEVT_LIST_ITEM_SELECTED, wxEVT_LIST_ITEM_DESELECTED}) {
    lstProblems->Bind(event, [this](wxListEvent&) { ShowSelected(); });
  }
}

wxSizer* ProblemsFrame::MakeHeader() {
  auto* purpose = new wxStaticText(this, wxID_ANY, Shown("服务和窗口遇到过的问题，以及它们的意思"));
  purpose->SetForegroundColour(QuietText());
  auto* texts = new wxBoxSizer(wxVERTICAL);
  texts->Add(MakeHeading(this, kProblemsTitle, kTitleFactor));
  texts->Add(purpose);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticBitmap(this, wxID_ANY, Art("problems", kPictureSize)),
           wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(kEdge)));
  row->Add(texts, wxSizerFlags(1).CentreVertical());
  return row;
}

std::uint64_t ProblemsFrame::ReadLog() {
  std::error_code error;
  const std::uint64_t size = files::InspectPath(log_, error).size;
  if (size == shownSize_) return size;
  shownSize_ = size;
  files::LogTail tail = files::ReadLogTail(log_, kShownOfLog);
  // Some messages end in a line break of their own.
  std::erase(tail.lines, "");
  std::reverse(tail.lines.begin(), tail.lines.end());
  note_->SetLabel(Shown(NoteText(tail.lines.size(), tail.IsWhole())));
  lstProblems->ShowLines(std::move(tail.lines));
  ShowSelected();
  return size;
}

void ProblemsFrame::ShowSelected() {
  const std::string line = lstProblems->SelectedLine();
  const core::Problem problem = core::Explain(line);
  const wxString text = line.empty() ? "" : Shown(problem.explanation + "\n\n" + problem.line);
  // Setting the same text would take the user's place in it.
  if (text != txtProblem->GetValue()) txtProblem->ChangeValue(text);
}

}  // namespace ui
