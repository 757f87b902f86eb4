#include "core/service_control.h"

#include "core/service_texts.h"
#include "platform/native_path.h"
#include "platform/system_message.h"
#include "settings/ini_file.h"
#include "text/conversions.h"

namespace core {
namespace {

using Event = Outcome::Event;

// A failed mail start is recorded under the Web server's key, and a failed mail stop is shown in
// the Web server's frame. Existing programs and users rely on both.
ServiceKind BlamedFor(ServiceKind service) {
  return service == ServiceKind::kMail ? ServiceKind::kWeb : service;
}

Outcome MakeOutcome(ServiceKind service, Event event) {
  Outcome outcome;
  outcome.service = service;
  outcome.event = event;
  outcome.frame = service;
  return outcome;
}

}  // namespace

void ServiceControl::Start(ServiceKind service) {
  if (Of(service).Start()) {
    ShowStarted(service);
  } else {
    ShowStartFailed(service);
  }
}

void ServiceControl::Stop(ServiceKind service) {
  if (Of(service).Stop()) {
    ShowStopped(service);
  } else {
    ShowStopFailed(service);
  }
}

void ServiceControl::StartAll() {
  cmdStartWebService();
  cmdStartMailService();
  cmdStartFtpService();
}

void ServiceControl::StartStopped() {
  for (const ServiceKind service : {ServiceKind::kWeb, ServiceKind::kMail, ServiceKind::kFtp}) {
    if (!Of(service).IsRunning()) Start(service);
  }
}

void ServiceControl::CloseAll() {
  for (Service* service : services_) {
    if (service->IsRunning()) service->Stop();
  }
}

void ServiceControl::ShowStarted(ServiceKind service) {
  Outcome outcome = MakeOutcome(service, Event::kStarted);
  outcome.address = AddressText(service, Of(service).Domain());
  outcome.enableAddress = true;
  if (service != ServiceKind::kFtp) {
    outcome.rootDir = platform::PathTextForUser(Of(service).RootDir());
  }
  view_.ShowOutcome(outcome);
  WriteStartFlag(service, true);
}

void ServiceControl::ShowStartFailed(ServiceKind service) {
  Outcome outcome = MakeOutcome(service, Event::kStartFailed);
  outcome.failure = Of(service).LastFailure();
  view_.ShowOutcome(outcome);
  WriteStartFlag(BlamedFor(service), false);
}

void ServiceControl::ShowStopped(ServiceKind service) {
  Outcome outcome = MakeOutcome(service, Event::kStopped);
  outcome.address = AddressTextWhenStopped(service, Of(service).Domain());
  if (service == ServiceKind::kWeb) outcome.enableAddress = false;
  view_.ShowOutcome(outcome);
}

void ServiceControl::ShowStopFailed(ServiceKind service) {
  Outcome outcome = MakeOutcome(service, Event::kStopFailed);
  outcome.frame = BlamedFor(service);
  view_.ShowOutcome(outcome);
}

void ServiceControl::WriteStartFlag(ServiceKind key, bool started) {
  const std::error_code error =
      settings::WriteValue(program_.File("startflg.dat"), "ServerStatus", TextsOf(key).flagKey,
                           text::BooleanText(started));
  if (!error) return;
  program_.errors.LogError("startflg.dat: cannot be written: " + platform::SystemMessage(error));
}

}  // namespace core
