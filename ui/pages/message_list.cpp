#include "ui/pages/message_list.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/traffic_text.h"
#include "text/printable_text.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

using ModMail::MessageSummary;

enum Column : int { kSubject, kFrom, kTo, kDate, kSize };

struct Looks {
  const char* heading;
  const char* longest;  // of a text that the column has room for
};
constexpr std::array<Looks, MessageList::kColumns> kLooks = {{{"主题", ""},
                                                              {"发件人", "王小明王小"},
                                                              {"收件人", "王小明"},
                                                              {"日期", "8888-88-88 88:88"},
                                                              {"大小", "888 MB"}}};
constexpr int kLeastSubject = 110;
constexpr std::size_t kToMinutes = 16;  // characters of a date

}  // namespace

MessageList::MessageList(wxWindow* parent)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                 wxLC_REPORT | wxLC_VIRTUAL | wxLC_SINGLE_SEL | wxBORDER_THEME) {
  for (const Looks& column : kLooks) AppendColumn(Shown(column.heading));
  ShareWidth();
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    ShareWidth();
  });
}

void MessageList::ShareWidth() {
  int rest = GetClientSize().x;
  for (int column = kFrom; column <= kSize; ++column) {
    const wxString longest = Shown(kLooks.at(static_cast<std::size_t>(column)).longest);
    const bool isHidden = column == kTo && !showsRecipients_;
    const int width = isHidden ? 0 : GetTextExtent(longest).x + FromDIP(2 * kGap);
    SetColumnWidth(column, width);
    rest -= width;
  }
  SetColumnWidth(kSubject, std::max(rest, FromDIP(kLeastSubject)));
}

void MessageList::ShowRecipients(bool shown) {
  if (std::exchange(showsRecipients_, shown) != shown) ShareWidth();
}

void MessageList::ShowMessages(std::vector<MessageSummary> messages) {
  if (messages == messages_) return;
  constexpr long kState = wxLIST_STATE_SELECTED | wxLIST_STATE_FOCUSED;
  const MessageSummary* selected = Selected();
  const MessageSummary kept = selected == nullptr ? MessageSummary() : *selected;
  const long former = GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
  // First of all, since it looks at the row.
  if (former >= 0) SetItemState(former, 0, kState);
  messages_ = std::move(messages);
  SetItemCount(static_cast<long>(messages_.size()));
  const auto found = std::find_if(messages_.begin(), messages_.end(), [&](const auto& message) {
    return ModMail::IsSameFile(message, kept);
  });
  if (found != messages_.end()) SetItemState(found - messages_.begin(), kState, kState);
  Refresh();
}

const MessageSummary* MessageList::Selected() const {
  const long row = GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
  const auto index = static_cast<std::size_t>(row);
  return row < 0 || index >= messages_.size() ? nullptr : &messages_[index];
}

wxString MessageList::OnGetItemText(long item, long column) const {
  const MessageSummary& message = messages_.at(static_cast<std::size_t>(item));
  switch (column) {
    case kSubject:
      return Shown(message.subject.empty() ? "（没有主题）" : message.subject);
    case kFrom:
      return Shown(message.from);
    case kTo:
      return Shown(text::Printable(message.user));
    case kDate:
      return Shown(text::DateTimeText(message.date).substr(0, kToMinutes));
    default:
      return Shown(core::ByteText(message.stamp.size));
  }
}

}  // namespace ui
