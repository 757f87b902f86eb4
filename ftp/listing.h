#pragma once

// The text of a whole listing.

#include <memory>
#include <optional>
#include <string>

#include "files/client_files.h"
#include "ftp/memory_budget.h"
#include "net/connection.h"
#include "net/task.h"

namespace ModFtp {

/// The lines of all visible entries of `folder`, which ends in a separator, in the system code
/// page. None if any entry cannot be inspected, if `memory` does not suffice, or if `data`, which
/// the listing is for, closes meanwhile. Links that lead out of where clients are confined are left
/// out. Suspends while it reads a large folder. `files` must outlive the task.
net::Task<std::optional<std::string>> BuildListing(const files::ClientFiles& files,
                                                   std::string folder, std::string lastCommand,
                                                   std::shared_ptr<net::Connection> data,
                                                   std::shared_ptr<MemoryShare> memory);

}  // namespace ModFtp
