#include "mail/mail_sessions.h"

namespace ModMail {

MailSessionState& MailSessions::Of(int slot, const std::shared_ptr<net::Connection>& client) {
  Session& session = sessions_.at(static_cast<std::size_t>(slot));
  if (!session.isOpen || session.client.lock() != client) {
    EndOf(slot);
    session.client = client;
    session.isOpen = true;
  }
  return session.state;
}

void MailSessions::EndOf(int slot) {
  Session& session = sessions_.at(static_cast<std::size_t>(slot));
  if (session.isOpen && onEnd_) onEnd_(session.state);
  session = {};
}

void MailSessions::EndAll() {
  for (int slot = 1; slot <= net::ConnectionSlots::kLastSlot; ++slot) EndOf(slot);
}

}  // namespace ModMail
