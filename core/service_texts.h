#pragma once

// Every text that the user reads of a service's start and stop. The mixed spellings and the
// trailing blanks are the settled ones.

#include "core/service.h"

namespace core {

struct ServiceTexts {
  const char* name;     // for UpdateServiceStatus
  const char* flagKey;  // in startflg.dat
  const char* startFailed;
  const char* restartHint;
  const char* started;
  const char* stopHint;
  const char* stopFailed;
  const char* stopFailedHint;
  const char* stopped;
  const char* startHint;
  const char* statusOn;
  const char* statusOff;
};

const ServiceTexts& TextsOf(ServiceKind service);

/// The address of a running service as it is shown: without a port.
std::string AddressText(ServiceKind service, const std::string& domain);

}  // namespace core
