#pragma once

// Every text about the start and stop of a service. Mixed spellings and trailing blanks are
// intended: they are the texts that users and their documents know.

#include <array>
#include <string>

#include "core/manager_view.h"

namespace core {

/// What is said of an outcome: the result label and the hint below it.
struct OutcomeTexts {
  const char* result;
  const char* hint;
};

struct ServiceTexts {
  const char* name;     // for UpdateServiceStatus
  const char* flagKey;  // in startflg.dat
  const char* statusOn;
  const char* statusOff;
  const char* address;             // of the running service, "*" for the domain
  const char* addressWhenStopped;  // likewise
  OutcomeTexts started;
  OutcomeTexts startFailed;
  OutcomeTexts stopped;
  OutcomeTexts stopFailed;
};

const ServiceTexts& TextsOf(ServiceKind service);
const OutcomeTexts& TextsOf(const Outcome& outcome);

/// A service that could not be stopped counts as off in the status bar.
std::string StatusText(const Outcome& outcome);

/// The address of a running and of a stopped service as it is shown: without a port.
std::string AddressText(ServiceKind service, const std::string& domain);
std::string AddressTextWhenStopped(ServiceKind service, const std::string& domain);

}  // namespace core
