#include "ui/controls/log_panel.h"

#include <wx/button.h>
#include <wx/filedlg.h>
#include <wx/settings.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>

#include "files/files.h"
#include "platform/native_path.h"
#include "text/printable_text.h"
#include "ui/controls/layout.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr const char* kExportTitle = "导出日志";
constexpr const char* kExportFilter =
    "LOG文件(*.log)|*.log|文本文件(*.txt)|*.txt|所有文件(*.*)|*.*";

constexpr int kListWidth = 440;
constexpr int kListHeight = 200;
// Measuring and drawing a longer line takes too long; it can be read elsewhere.
constexpr int kWidestColumn = 8000;
constexpr std::size_t kLongestShownLine = 1000;  // bytes

// A border around the list, which not every system draws.
wxPanel* MakeFrame(wxWindow* parent) {
  auto* frame = new wxPanel(parent);
  frame->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_3DSHADOW));
  frame->SetSizer(new wxBoxSizer(wxVERTICAL));
  return frame;
}

wxString ShownLine(const std::string& line) {
  return Shown(text::Printable(line, kLongestShownLine));
}

std::string PartText(const files::LogTail& tail) {
  return "日志较大，这里只显示最后 " + std::to_string(tail.lines.size()) +
         " 行；导出时写出全部内容。";
}

}  // namespace

LogList::LogList(wxWindow* parent)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition,
                 parent->FromDIP(wxSize(kListWidth, kListHeight)),
                 wxLC_REPORT | wxLC_VIRTUAL | wxLC_NO_HEADER | wxLC_SINGLE_SEL | wxBORDER_NONE) {
  AppendColumn("");
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    FitColumn();
  });
}

void LogList::SetTail(files::LogTail tail) {
  tail_ = std::move(tail);
  SetItemCount(static_cast<long>(tail_.lines.size()));
  FitColumn();
  Refresh();
}

wxString LogList::OnGetItemText(long item, long) const {
  return ShownLine(tail_.lines[static_cast<std::size_t>(item)]);
}

// As wide as the longest line, which is the widest but for a few pixels.
void LogList::FitColumn() {
  int width = GetClientSize().x;
  const auto longest = std::max_element(
      tail_.lines.begin(), tail_.lines.end(),
      [](const auto& left, const auto& right) { return left.size() < right.size(); });
  if (longest != tail_.lines.end()) {
    width = std::max(width, GetTextExtent(ShownLine(*longest)).x + FromDIP(2 * kEdge));
  }
  SetColumnWidth(0, std::min(width, FromDIP(kWidestColumn)));
}

LogPanel::LogPanel(wxWindow* parent, std::string log) : wxPanel(parent), log_(std::move(log)) {
  auto* frame = MakeFrame(this);
  lstLog = Named(new LogList(frame), "lstLog");
  frame->GetSizer()->Add(lstLog, wxSizerFlags(1).Expand().Border(wxALL, 1));
  lblLogPart = Named(new wxStaticText(this, wxID_ANY, ""), "lblLogPart");
  cmdClearLog = MakeButton(this, "cmdClearLog", "清空日志(&C)");
  cmdExportLog = MakeButton(this, "cmdExportLog", "导出日志(&E)...");
  cmdClearLog->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnClear(); });
  cmdExportLog->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnExport(); });
  Column column(this);
  column.Add(frame, 1);
  column.Add(lblLogPart);
  column.Add(MakeRow(this, {cmdClearLog, cmdExportLog}));
  SetSizer(column.Sizer());
  Fit();  // lays the buttons out before the page has its size
  Load(files::ReadLogTail(log_));
}

void LogPanel::Load(files::LogTail tail) {
  lblLogPart->SetLabel(Shown(PartText(tail)));
  lblLogPart->Show(!tail.IsWhole());
  lstLog->SetTail(std::move(tail));
  Layout();
}

void LogPanel::OnClear() {
  Load({});
  files::RemoveFile(log_);
}

void LogPanel::OnExport() {
  if (lstLog->IsEmpty()) return;
  wxFileDialog dialog(this, Shown(kExportTitle), "", "", Shown(kExportFilter),
                      wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  if (dialog.ShowModal() != wxID_OK) return;
  const std::string target = platform::PathTextFromUser(Typed(dialog.GetPath()));
  if (files::ExportLog(log_, lstLog->Tail(), target)) Warn(this, "日志未能导出！", kExportTitle);
}

}  // namespace ui
