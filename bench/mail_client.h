#pragma once

// A blocking client that sends one command per packet, as the mail server expects.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "bench/sockets.h"

namespace bench {

class MailClient {
 public:
  /// Connects and reads the greeting.
  explicit MailClient(std::uint16_t port);

  /// Sends `bytes` and reads through `end`. False for an error, or once the connection has ended.
  bool Ask(std::string_view bytes, std::string_view end = "\r\n");

  std::size_t ReplyBytes() const { return replyBytes_; }

 private:
  bool ReadTo(std::string_view end);

  Descriptor connection_;
  std::size_t replyBytes_ = 0;
};

}  // namespace bench
