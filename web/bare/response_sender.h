#pragma once

// Sends files and pages, each followed by the end of the connection. A file goes out in pieces of
// 10 KiB with a pause behind each, about 200 KB a second, unless the user wants another pace, and
// never more than one piece waits for a slow reader.
//
// A client that leaves early is no failure: the tasks then end as if it had stayed. What goes wrong
// with a file is logged, and the connection is closed.

#include <memory>
#include <optional>
#include <string>

#include "files/client_files.h"
#include "files/logs.h"
#include "net/connection.h"
#include "net/task.h"
#include "platform/file.h"
#include "web/answer_options.h"
#include "web/paced_file.h"

namespace ModWeb {

class ResponseSender {
 public:
  using Client = std::shared_ptr<net::Connection>;

  /// All arguments must outlive the sender, and the sender its tasks.
  ResponseSender(const files::ClientFiles& files, const files::ErrorLog& errors,
                 const AnswerOptions& answers)
      : files_(files), errors_(errors), answers_(answers) {}

  /// Sends the file, or nothing if it is missing. `path` is a path text.
  net::Task<> SendWebFile(std::string path, Client client) const;

  /// Sends the file, or the not-found page if it is missing.
  net::Task<> SendHtmlFile(std::string path, Client client) const;

  /// Sends an opened file, or the not-found page if `page` is not open; the request then ends as
  /// `ifNone` says.
  net::Task<> SendPage(platform::File page, Client client, net::ActivityEnd ifNone) const;

 private:
  net::Task<> SendFile(std::string path, Client client, bool pageIfMissing) const;
  net::Task<> SendOpened(platform::File file, Client client, bool pageIfMissing,
                         net::ActivityEnd ifMissing) const;
  std::optional<Pacing> WantedPacing() const;

  const files::ClientFiles& files_;
  const files::ErrorLog& errors_;
  const AnswerOptions& answers_;
};

/// Hands the not-found page to the client and leaves the connection open.
void SendNotFoundPage(net::Connection& client);

}  // namespace ModWeb
