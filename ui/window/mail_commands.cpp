#include "ui/window/mail_commands.h"

#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "core/local_network.h"
#include "mail/mail_accounts.h"
#include "mail/mail_server.h"
#include "mail/shown_message.h"
#include "platform/local_addresses.h"
#include "platform/system_message.h"
#include "ui/controls/message_box.h"
#include "ui/controls/toolkit_text.h"
#include "ui/dialogs/mail_message_dialog.h"
#include "ui/dialogs/mail_settings_dialog.h"
#include "ui/dialogs/mail_user_dialog.h"
#include "ui/pages/mail_user_list.h"
#include "ui/pages/message_panel.h"
#include "ui/window/content.h"

namespace ui {
namespace {

constexpr const char* kGone =
    "这封邮件已经不在了，或者刚刚变了：可能已被邮件程序收走，"
    "也可能又有新邮件写到这里。";

}  // namespace

void MailCommands::LoadUsers() {
  content_->lvMailUser->LoadMailUsers(manager_->mail.RootDir());
  ShowMessagesOfSelected();
}

// Says how many there are because the question before the deletion does not mention messages.
void MailCommands::ShowMessagesOfSelected() {
  const long row = content_->lvMailUser->SelectedRow();
  const std::string root = manager_->mail.RootDir();
  const std::string name = row >= 0 ? content_->lvMailUser->UserAt(row).name : "";
  std::string text = " ";
  if (row >= 0) {
    const std::size_t messages = ModMail::MessagesOf(root, name);
    text = messages == 0 ? "用户“" + name + "”没有邮件。"
                         : "用户“" + name + "”有 " + std::to_string(messages) +
                               " 封邮件，删除用户时会一起删除。";
  }
  content_->lblMessages->SetLabel(Shown(text));
  content_->messages->ShowMailbox(root, name);
}

void MailCommands::AddUser() {
  frmEmailUsers(&window_, manager_->program, manager_->mail).ShowModal();
  LoadUsers();
}

std::optional<ModMail::MailUser> MailCommands::SelectedOrFirst() const {
  const MailUserList& users = *content_->lvMailUser;
  if (users.GetItemCount() == 0) return std::nullopt;
  return users.UserAt(std::max(users.SelectedRow(), 0L));
}

void MailCommands::EditUser() {
  const auto user = SelectedOrFirst();
  if (!user) return;
  frmEmailUsers dialog(&window_, manager_->program, manager_->mail);
  dialog.SetTitle(Shown("编辑用户"));
  dialog.txtUser->SetValue(Shown(user->name));
  dialog.txtPass->SetValue(Shown(user->password));
  dialog.ShowModal();
  LoadUsers();
}

void MailCommands::AdaptPasswords(bool wantedSignIn, bool wantsSignIn) {
  if (wantedSignIn == wantsSignIn) return;
  const std::string root = manager_->mail.RootDir();
  if (wantsSignIn) {
    const auto fault = ModMail::HashMailPasswords(root);
    if (fault) {
      Warn(&window_,
           "用户“" + fault->user + "”的密码没有加密保存：" + platform::SystemMessage(fault->error));
    }
  } else {
    const auto users = ModMail::ListMailUsers(root);
    const bool isAnyHashed =
        std::any_of(users.begin(), users.end(), [](const auto& user) { return user.isHashed; });
    if (isAnyHashed) Warn(&window_, "密码已加密保存，不能还原。请给这些邮件用户重新设置密码。");
  }
  LoadUsers();
}

void MailCommands::DeleteUser() {
  const long row = content_->lvMailUser->SelectedRow();
  if (row < 0) return Warn(&window_, "请选择要删除的用户！");
  if (!Confirm(&window_, "确实要删除该用户吗？")) return;
  ModMail::RemoveMailUser(manager_->mail.RootDir(), content_->lvMailUser->UserAt(row).name,
                          manager_->program.errors);
  content_->lvMailUser->DeleteItem(row);
  ShowMessagesOfSelected();
}

void MailCommands::ShowSettings() {
  const auto user = SelectedOrFirst();
  if (!user) return Warn(&window_, "还没有邮件用户，请先添加一个。");
  const core::Service& mail = manager_->mail;
  const core::Ports ports = mail.IsRunning() ? mail.PortsInUse() : mail.PortsToUse();
  std::vector<std::string> servers = core::LikelyFirst(platform::LocalAddresses());
  if (servers.empty()) servers.emplace_back("127.0.0.1");
  frmMailSettings(&window_, {user->name, user->password, mail.Domain(), std::move(servers),
                             ports.first, ports.second})
      .ShowModal();
}

void MailCommands::OpenMessage(const ModMail::MessageSummary& message) {
  const ModMail::MessageSummary opened = message;  // the list may change meanwhile
  auto shown =
      std::make_unique<ModMail::ShownMessage>(ModMail::PathOf(manager_->mail.RootDir(), opened));
  if (!shown->IsGood()) {
    Warn(&window_, kGone);
    return ShowMessagesOfSelected();
  }
  frmMailMessage(&window_, std::move(shown),
                 {.placeFor = [this](const std::string& name) { return opened_.NewFile(name); },
                  .remove = [&](wxWindow& parent,
                                std::size_t count) { return Remove(parent, opened, count); }})
      .ShowModal();
}

void MailCommands::RemoveMessage(const ModMail::MessageSummary& message) {
  Remove(window_, ModMail::MessageSummary(message), 1);
}

// `count`: the messages in the file, as far as known.
bool MailCommands::Remove(wxWindow& parent, const ModMail::MessageSummary& message,
                          std::size_t count) {
  const std::string all =
      count > 1 ? "同一个文件里的 " + std::to_string(count) + " 封邮件会一起删除。\n" : "";
  if (!Confirm(&parent, "确实要删除这封邮件吗？\n" + all +
                            "解出的正文和附件会一起删除；"
                            "Accessary 文件夹里的附件副本不会删除。")) {
    return false;
  }
  const std::error_code error =
      ModMail::RemoveMessage(manager_->mail.RootDir(), message, manager_->program.errors);
  if (error == std::errc::no_such_file_or_directory) {
    Warn(&parent, kGone);
  } else if (error) {
    Warn(&parent, "邮件未能删除：" + platform::SystemMessage(error));
    return false;
  }
  ShowMessagesOfSelected();
  return true;
}

}  // namespace ui
