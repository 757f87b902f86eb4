#include "ui/pages/shared_folder.h"

#include <wx/button.h>
#include <wx/dnd.h>
#include <wx/gauge.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <utility>

#include "core/copying_text.h"
#include "platform/native_path.h"
#include "ui/controls/accessible.h"
#include "ui/controls/basic_controls.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

using files::Copying;

constexpr int kPause = 5;       // milliseconds, in which everything else runs
constexpr int kAskAgain = 500;  // milliseconds
constexpr std::chrono::milliseconds kShowEvery{100};
constexpr int kWhole = 1000;  // of the bar
constexpr int kBarWidth = 100;
constexpr int kLeastText = 120;
constexpr std::size_t kMostJobs = 100;

// What is shown may need more room than there is: then the page scrolls.
void LayOutPage(wxWindow& part) {
  for (wxWindow* each = &part; each != nullptr && !each->IsTopLevel(); each = each->GetParent()) {
    each->Layout();
  }
}

// Shows by the selection where files would go.
class Dropping : public wxFileDropTarget {
 public:
  explicit Dropping(SharedFolder& folder) : folder_(folder) {}

  wxDragResult OnDragOver(wxCoord x, wxCoord y, wxDragResult) override {
    int flags = 0;
    const wxTreeItemId item = folder_.Tree().HitTest(wxPoint(x, y), flags);
    if (item.IsOk()) {
      folder_.Tree().SelectItem(item);
    } else {
      folder_.Tree().UnselectAll();
    }
    return wxDragCopy;
  }

  bool OnDropFiles(wxCoord x, wxCoord y, const wxArrayString& names) override {
    folder_.Drop(wxPoint(x, y), names);
    return true;
  }

 private:
  SharedFolder& folder_;
};

}  // namespace

SharedFolder::SharedFolder(wxWindow* parent, const char* tree, FolderTree::Opens opens,
                           Questions questions)
    : wxPanel(parent), questions_(std::move(questions)), tree_(new FolderTree(this, tree, opens)) {
  tree_->SetDropTarget(new Dropping(*this));
  lblCopied_ = Named(new wxStaticText(this, wxID_ANY, ""), "lblCopied");
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(tree_, wxSizerFlags(1).Expand());
  column->Add(MakeBar(), wxSizerFlags().Expand());
  column->Add(lblCopied_, wxSizerFlags().Expand().Border(wxTOP, FromDIP(kTightGap)));
  SetSizer(column);
  ShowBar(false);
  ShowOutcome("");
  Fit();  // the tree is laid out once before the page has its size
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { Work(); });
}

SharedFolder::~SharedFolder() = default;

wxSizer* SharedFolder::MakeBar() {
  lblCopying_ = Named(new wxStaticText(this, wxID_ANY, "", wxDefaultPosition,
                                       FromDIP(wxSize(kLeastText, -1)), wxST_ELLIPSIZE_END),
                      "lblCopying");
  barCopying_ =
      Named(new wxGauge(this, wxID_ANY, kWhole, wxDefaultPosition, FromDIP(wxSize(kBarWidth, -1))),
            "barCopying");
  cmdCancelCopying_ = MakeActionButton(this, "cmdCancelCopying", "取消(&X)", [this] { Cancel(); });
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const wxSizerFlags next = wxSizerFlags().CentreVertical().Border(wxTOP, FromDIP(kGap));
  row->Add(lblCopying_, wxSizerFlags(next).Proportion(1));
  row->Add(barCopying_, wxSizerFlags(next).Border(wxTOP | wxLEFT | wxRIGHT, FromDIP(kGap)));
  row->Add(cmdCancelCopying_, next);
  return row;
}

void SharedFolder::AddFiles() {
  const std::string into = tree_->FolderOf(tree_->GetSelection());
  Copy(questions_.chooseFiles(), into);
}

void SharedFolder::Drop(const wxPoint& place, const wxArrayString& names) {
  int flags = 0;
  const std::string into = tree_->FolderOf(tree_->HitTest(place, flags));
  std::vector<std::string> chosen;
  for (const wxString& name : names) chosen.push_back(platform::PathTextFromUser(Typed(name)));
  Copy(std::move(chosen), into);
}

void SharedFolder::Copy(std::vector<std::string> chosen, const std::string& into) {
  if (chosen.empty() || into.empty() || jobs_.size() == kMostJobs) return;
  if (jobs_.empty()) {
    outcome_ = {};
    ShowOutcome("");
    ShowBar(true);
    timer_.Start(kPause);
  }
  jobs_.push_back({std::move(chosen), into});
}

void SharedFolder::Work() {
  if (!copying_) copying_ = std::make_unique<Copying>(jobs_.front().chosen, jobs_.front().into);
  const Copying::State state = copying_->Step();
  if (state == Copying::State::kAsks) return Ask();
  if (state == Copying::State::kEnded) return End();
  ShowProgress();
}

void SharedFolder::Ask() {
  timer_.Stop();
  if (!questions_.mayAsk()) {
    timer_.Start(kAskAgain);
    return;
  }
  const auto decision = questions_.mayReplace(copying_->Now().path);
  if (!decision) return Cancel();
  copying_->Decide(*decision);
  timer_.Start(kPause);
}

void SharedFolder::Cancel() {
  if (!copying_) return;
  copying_->Cancel();
  jobs_.resize(1);
  End();
}

void SharedFolder::End() {
  outcome_.Add(copying_->Result());
  copying_.reset();
  const std::string into = std::move(jobs_.front().into);
  jobs_.pop_front();
  if (jobs_.empty()) {
    timer_.Stop();
    ShowBar(false);
  }
  lblCopied_->SetForegroundColour(outcome_.left > 0 ? FailedText() : QuietText());
  ShowOutcome(core::CopiedText(outcome_));
  tree_->ShowAgain(into);
}

void SharedFolder::ShowProgress() {
  const auto now = std::chrono::steady_clock::now();
  if (now - shown_ < kShowEvery) return;
  shown_ = now;
  lblCopying_->SetLabelText(Shown(core::CopyingText(copying_->Now())));
  barCopying_->SetValue(core::ShareOf(copying_->Now(), kWhole));
}

void SharedFolder::ShowBar(bool copies) {
  if (!copies && cmdCancelCopying_->HasFocus()) tree_->SetFocus();
  lblCopying_->SetLabelText("");
  barCopying_->SetValue(0);
  for (wxWindow* part : {static_cast<wxWindow*>(lblCopying_), static_cast<wxWindow*>(barCopying_),
                         static_cast<wxWindow*>(cmdCancelCopying_)}) {
    part->Show(copies);
  }
  LayOutPage(*this);
}

void SharedFolder::ForgetOutcome() {
  if (jobs_.empty()) ShowOutcome("");
}

void SharedFolder::ShowOutcome(const std::string& text) {
  lblCopied_->SetLabelText(Shown(text));
  lblCopied_->Show(!text.empty());
  LayOutPage(*this);
}

}  // namespace ui
