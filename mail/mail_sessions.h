#pragma once

// The SMTP sessions, where they are kept apart: the state that all connections share otherwise, for
// each connection.

#include <array>
#include <functional>
#include <memory>

#include "mail/mail_session.h"
#include "net/connection_slots.h"

namespace ModMail {

class MailSessions {
 public:
  using End = std::function<void(MailSessionState&)>;

  /// `onEnd` gets the state of each session that ends, before it is forgotten.
  explicit MailSessions(End onEnd = {}) : onEnd_(std::move(onEnd)) {}

  /// The state of the client on `slot`, new for a new client.
  MailSessionState& Of(int slot, const std::shared_ptr<net::Connection>& client);

  /// To be called when the client of `slot` has gone, if that is known.
  void EndOf(int slot);
  void EndAll();

 private:
  struct Session {
    std::weak_ptr<net::Connection> client;
    MailSessionState state;
    bool isOpen = false;
  };

  End onEnd_;
  std::array<Session, net::ConnectionSlots::kLastSlot + 1> sessions_;
};

}  // namespace ModMail
