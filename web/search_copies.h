#pragma once

// Copies served pages next to the site's search index, one at a time. The work belongs to the
// service, not to the client that requested the page, and yields to other events.

#include <deque>
#include <string>

#include "core/service_environment.h"
#include "net/background_worker.h"
#include "settings/program.h"

namespace ModWeb {

class SearchCopies {
 public:
  explicit SearchCopies(const core::ServiceEnvironment& environment);

  /// Copies the file `from` to `to`, which is replaced; both are path texts. A failure is logged
  /// with `name`. Ignored if the same copy waits already, or a hundred others do.
  void Add(const std::string& from, const std::string& to, const std::string& name);

  /// Ends the current copy and forgets those that wait.
  void Stop();

 private:
  struct Job {
    std::string from;
    std::string to;
    std::string name;
    bool operator==(const Job&) const = default;
  };

  net::Task<> Work();
  net::Task<std::error_code> Copy(Job job);

  const settings::Program& program_;
  std::deque<Job> waiting_;
  net::BackgroundWorker worker_;
};

}  // namespace ModWeb
