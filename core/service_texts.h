#pragma once

// All texts about starting and stopping a service. Mixed spellings and trailing blanks are
// intended: users and their documents know the texts like this.

#include <array>
#include <string>

#include "core/manager_view.h"

namespace core {

/// The texts for an outcome: the result label and the hint below it.
struct OutcomeTexts {
  const char* result;
  const char* hint;
};

struct ServiceTexts {
  const char* name;     // for UpdateServiceStatus
  const char* flagKey;  // in startflg.dat
  const char* statusOn;
  const char* statusOff;
  const char* address;             // of the running service; "*" is the domain
  const char* addressWhenStopped;  // likewise
  OutcomeTexts started;
  OutcomeTexts startFailed;
  OutcomeTexts stopped;
  OutcomeTexts stopFailed;
};

const ServiceTexts& TextsOf(ServiceKind service);
const OutcomeTexts& TextsOf(const Outcome& outcome);

/// A service that failed to stop counts as off in the status bar.
std::string StatusText(const Outcome& outcome);

/// The displayed address of a running and of a stopped service, without the port.
std::string AddressText(ServiceKind service, const std::string& domain);
std::string AddressTextWhenStopped(ServiceKind service, const std::string& domain);

}  // namespace core
