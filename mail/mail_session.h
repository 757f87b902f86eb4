#pragma once

// The session state of the mail server. All SMTP and POP3 connections share one set, on purpose: a
// client that names a user, counts messages or adds a recipient does so for all of them. Where
// sessions are kept apart, each has its own.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace ModMail {

enum class TransferStage : std::int16_t {
  kWaiting = 0,  // for the first chunk of a message
  kReceiving = 1,
  kComplete = 2,  // until the next DATA
};

/// A message being received, where what is acknowledged is kept (mail/honest_receipt.h).
struct MessageInProgress {
  bool isInside = false;
  std::string tail = {};  // the last bytes of what has arrived
  int number = 0;         // 0 until the first byte
  std::uint64_t size = 0;
  std::string_view refusal = {};  // the reply that it will get; empty if it is being stored
};

struct MailSessionState {
  static constexpr int kRecipients = 11;
  static constexpr int kLargestNumber = 50;

  std::string currentUser;  // as last named by MAIL, RCPT or USER, with or without a mailbox
  std::int16_t messageCount = 0;
  TransferStage transferStage = TransferStage::kWaiting;
  std::int16_t cursor = 0;  // of the loops over recipients and listed messages
  std::string lastChunk;    // the bytes of the last SMTP arrival
  std::array<std::string, kRecipients> MailRecipients;  // in use up to the first empty one

  MessageInProgress message;

  /// Entry k is the size of the k-th message of the last listing, in whichever mailbox. Entry 0 is
  /// never used.
  std::array<std::int32_t, kLargestNumber + 1> messageSizes = {};
};

}  // namespace ModMail
