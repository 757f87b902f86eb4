#pragma once

// What was the matter when a service did not start, in words for the user, with the next step. All
// texts of that kind are made here. Asks nobody; who has the port is found out by the caller.

#include <optional>
#include <string>

#include "core/service.h"
#include "platform/listening_port.h"

namespace core {

struct Diagnosis {
  /// What can be done about it from where it is shown.
  enum class Remedy { kNone, kChangeOptions, kCopyCommand };

  std::string brief;  // for a narrow place: up to two short lines
  std::string text;   // in full, in lines of about 40 characters
  Remedy remedy = Remedy::kNone;
  std::string command;  // to be copied; empty unless that is the remedy
};

/// `owner`: the process that listens on the port, if the system tells. `executable`: this program,
/// as the user's shell names it.
Diagnosis Explain(const StartFailure& failure, const std::optional<platform::PortOwner>& owner,
                  const std::string& executable);

/// Why Server.ini, though it is there, cannot be used (settings/server_ini.h), in one line; and the
/// same with what follows from it.
std::string SettingsFaultText(const std::error_code& fault);
Diagnosis ExplainSettings(const std::error_code& fault);

/// Why what a dialog was to save is not saved.
std::string UnsavedText(const std::error_code& error);

}  // namespace core
