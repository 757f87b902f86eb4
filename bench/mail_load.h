#pragma once

// What a mail client does, and how long it takes. All throw when a server refuses.

#include <cstddef>
#include <cstdint>
#include <string>

#include "bench/tarnwerk.h"

namespace bench {

/// A message of at least that size, with the line that ends it for SMTP. No line of it but that
/// ends with a dot, so that no arrival looks like the end of a message.
std::string MessageText(std::size_t size);
std::string SentMessage(std::size_t size);

/// In how many commands a message is sent: Tarnwerk remembers recipients until QUIT and would write
/// every message once more for each further RCPT, so it gets a NOOP in its place.
enum class Recipients { kEachTime, kOnce };

/// The seconds until `count` messages in one session are acknowledged.
double SendSeconds(std::uint16_t port, const std::string& message, int count,
                   Recipients recipients);

/// What ends a message that is collected.
enum class MessageEnd { kDot, kTarnwerks };

/// The seconds of STAT, RETR and DELE for the messages from 1 to `count`, each of at least `bytes`.
double CollectSeconds(std::uint16_t port, int count, std::size_t bytes, MessageEnd end);

/// The median seconds of a STAT.
double StatSeconds(std::uint16_t port);

/// Puts messages from 1 to `count` into Tarnwerk's mailbox, or removes them.
void FillMailbox(const Tarnwerk& tarnwerk, int count, const std::string& text);
void EmptyMailbox(const Tarnwerk& tarnwerk, int count);

}  // namespace bench
