#pragma once

// Where clients have to sign in, what belongs to one POP3 connection: who it is, and a state of its
// own in place of the one that all connections share otherwise.

#include <array>
#include <memory>
#include <utility>

#include "core/sign_in.h"
#include "mail/mail_session.h"
#include "net/connection.h"
#include "net/connection_slots.h"

namespace ModMail {

struct Pop3Session {
  core::Login login;
  MailSessionState state;
};

/// The session of each slot's connection.
class Pop3Sessions {
 public:
  /// Another connection than at the last call begins anew, however the former one ended.
  Pop3Session& Of(int slot, const std::shared_ptr<net::Connection>& connection) {
    Entry& entry = entries_.at(static_cast<std::size_t>(slot - 1));
    if (entry.connection.lock() != connection) entry = {connection, {}};
    return entry.session;
  }

 private:
  struct Entry {
    std::weak_ptr<net::Connection> connection;
    Pop3Session session;
  };

  std::array<Entry, net::ConnectionSlots::kLastSlot> entries_;
};

/// Puts the state of a session in place of the shared one, as long as this object lives.
class OwnState {
 public:
  /// Nothing is replaced if `own` is null.
  OwnState(MailSessionState& shared, MailSessionState* own) : shared_(shared), own_(own) { Swap(); }
  ~OwnState() { Swap(); }
  OwnState(const OwnState&) = delete;
  OwnState& operator=(const OwnState&) = delete;

 private:
  void Swap() {
    if (own_ != nullptr) std::swap(shared_, *own_);
  }

  MailSessionState& shared_;
  MailSessionState* own_;
};

}  // namespace ModMail
