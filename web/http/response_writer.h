#pragma once

// Sends an answer: small ones in one piece, files at the pace of the site.

#include <memory>
#include <optional>
#include <string>

#include "net/connection.h"
#include "net/task.h"
#include "web/http/response.h"
#include "web/paced_file.h"

namespace ModWeb {

struct WriteOptions {
  bool headOnly = false;
  bool keepsAlive = false;
  Pacing pacing = {};
};

/// Returns once the system has taken everything; the text says why it was cut short, and the
/// connection must be closed then.
net::Task<std::optional<std::string>> WriteResponse(HttpResponse response, WriteOptions options,
                                                    std::shared_ptr<net::Connection> client);

}  // namespace ModWeb
