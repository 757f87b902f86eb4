#pragma once

// Explains to the user why a service did not start, and what to do next. All such texts are made
// here. It queries nothing: the caller finds out who has the port.

#include <optional>
#include <string>

#include "core/service.h"
#include "platform/listening_port.h"

namespace core {

struct Diagnosis {
  /// The remedy offered where the diagnosis is shown.
  enum class Remedy {
    kNone,
    kChangePort,  // in the options
    kCopyCommand,
    kRetry,  // once the user has done what the text says
  };

  std::string brief;  // for narrow places: at most two short lines
  std::string text;   // the full text, in lines of about 40 characters
  Remedy remedy = Remedy::kNone;
  std::string command = {};  // the text to copy; empty unless that is the remedy
  int port = 0;              // to be changed; what is wrong with it, may be no port at all
};

/// Who has the port that could not be opened, as far as known.
struct PortUser {
  std::optional<platform::PortOwner> process;
  std::string ownService;  // the name of the service if it is one of this program; else empty
};

/// The port on which browsers show the pages of the Web server, and the only one unless it answers
/// with HTTP. So without that the advice does not lead the Web server to another.
inline constexpr int kBrowsersPort = 80;

/// The tick in the Web server's options that makes it answer with HTTP.
inline constexpr const char* kForBrowsers = "适合今天的浏览器";

/// What the advice depends on besides the failure.
struct Circumstances {
  std::string executable = {};   // the path of this program for the user's shell
  bool answersWithHttp = false;  // the Web server does, so any port will do
};

Diagnosis Explain(ServiceKind service, const StartFailure& failure, const PortUser& user,
                  const Circumstances& circumstances);

/// Why an existing Server.ini cannot be used (settings/server_ini.h), in one line; and the same
/// with the consequences.
std::string SettingsFaultText(const std::error_code& fault);
Diagnosis ExplainSettings(const std::error_code& fault);

/// Why a dialog's settings were not saved.
std::string UnsavedText(const std::error_code& error);

}  // namespace core
