#pragma once

// What tells one version of a file from another, and what a client that has one asks with it.

#include <chrono>
#include <string>

#include "platform/file.h"
#include "web/http/request_reader.h"

namespace ModWeb {

struct Validators {
  explicit Validators(const platform::File& file);

  std::string tag;  // in its quotation marks
  std::chrono::sys_seconds written;
};

/// Whether the client has this version already, so that the content need not be sent.
bool IsKnown(const HttpRequest& request, const Validators& file);

/// Whether the ranges of the request are of this version.
bool AreRangesOf(const HttpRequest& request, const Validators& file);

}  // namespace ModWeb
