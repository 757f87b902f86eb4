#pragma once

// Collects served pages beside the site's search index, one after another. That belongs to the
// service, not to the client that asked for the page, and takes turns with other events, however
// long the page is.

#include <deque>
#include <string>

#include "core/service_environment.h"
#include "net/background_worker.h"
#include "settings/program.h"

namespace ModWeb {

class SearchCopies {
 public:
  explicit SearchCopies(const core::ServiceEnvironment& environment);

  /// Copies the file `from` over whatever `to` is, path texts both. What fails is logged under
  /// `name`. A copy that waits already is not made twice; there are no more than a hundred.
  void Add(const std::string& from, const std::string& to, const std::string& name);

  /// Ends what is under way and forgets what waits.
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
