#pragma once

// A blocking client that sends one command per packet, as the mail server expects.

#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

class MailClient {
 public:
  /// Connects and reads the greeting.
  explicit MailClient(std::uint16_t port);
  ~MailClient();
  MailClient(const MailClient&) = delete;
  MailClient& operator=(const MailClient&) = delete;

  /// Sends `bytes` and reads through `end`. False once the connection has ended.
  bool Ask(std::string_view bytes, std::string_view end = "\r\n");

 private:
  bool ReadTo(std::string_view end);

  int socket_;
};

}  // namespace bench
