#pragma once

// An answer as it will be sent: a status, fields, and a body of pieces, each a text and then a
// range of one file. A page is one text, a file one range, and several ranges of a file are divided
// by texts.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "net/connection_report.h"
#include "platform/file.h"
#include "web/http/byte_ranges.h"

namespace ModWeb {

struct HttpResponse {
  struct Piece {
    std::string text = {};
    ByteRange range = {};
  };

  int status = 200;
  std::string reason = {};  // that of the status, if it is empty
  std::string fields = {};  // lines, each with its end; without length, date and connection
  platform::File file = {};
  std::vector<Piece> body = {};
  net::ActivityEnd end = net::ActivityEnd::kComplete;  // of the request, once it has been sent

  void AddField(std::string_view name, std::string_view value);
  /// Sets the type and a body of one text.
  void SetText(std::string_view type, std::string text);
  std::uint64_t Length() const;
};

/// Whether answers of that status have one; for a client, what would come behind the header of the
/// others is the next answer.
bool HasBody(int status);

/// The status line and all fields, up to the blank line. `keepsAlive`: whether the connection goes
/// on afterwards.
std::string HeadOf(const HttpResponse& response, bool keepsAlive);

/// A page that tells a visitor why there is nothing to see. That of 404 is the site's usual one.
HttpResponse Refused(int status);

/// "/"-separated names as a URL.
HttpResponse Redirected(const std::string& path, const std::string& query);

}  // namespace ModWeb
