#include "ui/controls/selector.h"

#include <wx/dcbuffer.h>
#include <wx/dcgraph.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/stattext.h>

#include <algorithm>
#include <utility>

#include "ui/controls/accessible.h"
#include "ui/controls/art.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kPictureSize = 40;
constexpr int kWidth = 108;
constexpr double kRadius = 6;

std::string WithCount(const std::string& caption, const std::string& count) {
  return count.empty() ? caption : caption + "（" + count + "）";
}

}  // namespace

Selector::Selector(wxWindow* parent, Names names, const char* art, const char* caption,
                   std::function<void()> onChoose)
    : wxWindow(parent, wxID_ANY), caption_(caption), onChoose_(std::move(onChoose)) {
  Named(this, names.self);
  SetLabel(Shown(caption));
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  SetBackgroundColour(parent->GetBackgroundColour());
  picture_ = Named(new wxStaticBitmap(this, wxID_ANY, Art(art, kPictureSize)), names.picture);
  label_ = Named(new wxStaticText(this, wxID_ANY, Shown(caption)), names.label);
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(picture_, wxSizerFlags().CentreHorizontal().Border(wxTOP, FromDIP(kEdge)));
  column->Add(label_, wxSizerFlags().CentreHorizontal().Border(wxTOP, FromDIP(kTightGap)));
  column->AddSpacer(FromDIP(kEdge - kTightGap));
  column->SetMinSize(FromDIP(wxSize(kWidth, -1)));
  SetSizer(column);
  for (wxWindow* window : {static_cast<wxWindow*>(this), static_cast<wxWindow*>(picture_),
                           static_cast<wxWindow*>(label_)}) {
    BindMouse(window);
  }
  // Handled here, before the dialog keys. The style that gets all keys would also get the mnemonics
  // of the page.
  Bind(wxEVT_CHAR_HOOK, &Selector::OnKey, this);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { OnPaint(); });
  const auto repaint = [this](wxFocusEvent& event) {
    Refresh();
    event.Skip();
  };
  Bind(wxEVT_SET_FOCUS, repaint);
  Bind(wxEVT_KILL_FOCUS, repaint);
}

void Selector::BindMouse(wxWindow* window) {
  const auto choose = [this](wxMouseEvent&) {
    SetFocus();
    onChoose_();
  };
  window->Bind(wxEVT_LEFT_DOWN, choose);
  window->Bind(wxEVT_LEFT_DCLICK, choose);
  window->Bind(wxEVT_ENTER_WINDOW, [this](wxMouseEvent&) { SetHovered(true); });
  window->Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent&) { SetHovered(false); });
  window->SetCursor(wxCursor(wxCURSOR_HAND));
}

void Selector::Select(bool selected) {
  selected_ = selected;
  TellReaders();
  wxFont font = GetFont();
  if (selected) font.MakeBold();
  label_->SetFont(font);
  Layout();
  ShowGround();
}

void Selector::ShowCount(const std::string& count) {
  const wxString label = Shown(WithCount(caption_, count));
  if (label == GetLabel()) return;
  SetLabel(label);
  label_->SetLabel(label);
  TellReaders();
  Layout();
}

void Selector::KeepRoomForCount() {
  const wxFont font = GetFont().Bold();
  int width = 0;
  GetTextExtent(Shown(WithCount(caption_, "99+")), &width, nullptr, nullptr, nullptr, &font);
  GetSizer()->SetMinSize(std::max(width + FromDIP(2 * kTightGap), FromDIP(kWidth)), -1);
}

void Selector::TellReaders() {
  Describe(*this, Typed(GetLabel()), AccessibleRole::kButton, selected_ ? "当前页面" : "");
}

void Selector::SetHovered(bool hovered) {
  hovered_ = hovered;
  ShowGround();
}

wxColour Selector::Ground() const {
  const double strength = selected_ ? 0.28 : hovered_ ? 0.12 : 0;
  return Mixed(AccentColour(), GetParent()->GetBackgroundColour(), strength);
}

// Not every system draws texts and pictures with a transparent background.
void Selector::ShowGround() {
  picture_->SetBackgroundColour(Ground());
  label_->SetBackgroundColour(Ground());
  Refresh();
}

void Selector::OnKey(wxKeyEvent& event) {
  switch (event.GetKeyCode()) {
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
    case WXK_SPACE:
      return onChoose_();
    case WXK_DOWN:
    case WXK_UP: {
      wxWindow* next = event.GetKeyCode() == WXK_DOWN ? GetNextSibling() : GetPrevSibling();
      if (next != nullptr) next->SetFocus();
      return;
    }
    case WXK_TAB:
      Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                 : wxNavigationKeyEvent::IsForward);
      return;
    default:
      event.Skip();
  }
}

void Selector::OnPaint() {
  wxAutoBufferedPaintDC screen(this);
  screen.SetBackground(wxBrush(GetParent()->GetBackgroundColour()));
  screen.Clear();
  wxGCDC dc(screen);
  dc.SetBrush(wxBrush(Ground()));
  dc.SetPen(HasFocus() ? wxPen(AccentColour(), FromDIP(2)) : *wxTRANSPARENT_PEN);
  const int inset = FromDIP(3);
  dc.DrawRoundedRectangle(GetClientRect().Deflate(inset), FromDIP(kRadius));
}

}  // namespace ui
