#include "ui/pages/mail_user_list.h"

#include "ui/controls/art.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kPictureSize = 16;
constexpr int kUserPicture = 0;  // the index of "user"

}  // namespace

MailUserList::MailUserList(wxWindow* parent)
    : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                 wxLC_REPORT | wxLC_SINGLE_SEL | wxBORDER_THEME) {
  Named(this, "lvMailUser");
  wxVector<wxBitmapBundle> pictures;
  pictures.push_back(Art("user", kPictureSize));
  SetSmallImages(pictures);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    ShareWidth();
    event.Skip();
  });
}

void MailUserList::LoadMailUsers(const std::string& mailRoot) {
  Freeze();
  DeleteAllItems();
  if (GetColumnCount() == 0) {
    AppendColumn(Shown("用户"));
    AppendColumn(Shown("密码"));
    ShareWidth();
  }
  for (const ModMail::MailUser& user : ModMail::ListMailUsers(mailRoot)) {
    const long row = InsertItem(GetItemCount(), Shown(user.name), kUserPicture);
    SetItem(row, 1, Shown(user.isHashed ? "（已加密）" : user.password));
    SetItemData(row, user.isHashed ? 1 : 0);
  }
  Thaw();
}

long MailUserList::SelectedRow() const {
  return GetNextItem(-1, wxLIST_NEXT_ALL, wxLIST_STATE_SELECTED);
}

ModMail::MailUser MailUserList::UserAt(long row) const {
  const bool isHashed = GetItemData(row) != 0;
  return {Typed(GetItemText(row, 0)), isHashed ? std::string() : Typed(GetItemText(row, 1)),
          isHashed};
}

void MailUserList::ShareWidth() {
  for (int column = 0; column < GetColumnCount(); ++column) {
    SetColumnWidth(column, GetClientSize().GetWidth() / 2);
  }
}

}  // namespace ui
