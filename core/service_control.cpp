#include "core/service_control.h"

#include "core/service_texts.h"
#include "core/start_diagnosis.h"
#include "platform/native_path.h"
#include "platform/text_case.h"
#include "settings/ini_file.h"
#include "text/conversions.h"

namespace core {

void ServiceControl::cmdStartWebService() { Start(ServiceKind::kWeb); }
void ServiceControl::cmdStopWebService() { Stop(ServiceKind::kWeb); }
void ServiceControl::cmdStartFtpService() { Start(ServiceKind::kFtp); }
void ServiceControl::cmdStopFtpService() { Stop(ServiceKind::kFtp); }
void ServiceControl::cmdStartMailService() { Start(ServiceKind::kMail); }
void ServiceControl::cmdStopMailService() { Stop(ServiceKind::kMail); }

void ServiceControl::StartAll() {
  cmdStartWebService();
  cmdStartMailService();
  cmdStartFtpService();
}

void ServiceControl::CloseAll() {
  for (Service* service : {&services_.web, &services_.ftp, &services_.mail}) {
    if (service->IsRunning()) service->Stop();
  }
}

Service& ServiceControl::Of(ServiceKind service) {
  switch (service) {
    case ServiceKind::kFtp:
      return services_.ftp;
    case ServiceKind::kMail:
      return services_.mail;
    case ServiceKind::kWeb:
      break;
  }
  return services_.web;
}

void ServiceControl::Start(ServiceKind service) {
  const bool started = Of(service).Start();
  started ? ShowStarted(service) : ShowStartFailed(service);
}

void ServiceControl::ShowStarted(ServiceKind service) {
  const ServiceTexts& texts = TextsOf(service);
  view_.SetResult(service, texts.started);
  view_.EnableAddress(service, true);
  view_.SetAddress(service, AddressText(service, Of(service).Domain()));
  view_.SetHint(service, texts.stopHint);
  if (service != ServiceKind::kFtp) {
    view_.SetRootDir(service, platform::PathTextForUser(Of(service).RootDir()));
  }
  view_.ShowButtons(service, true);
  view_.SwitchMenuItems(service, true);
  UpdateServiceStatus("ON", texts.statusOn, texts.name);
  WriteStartFlag(service, true);
}

void ServiceControl::ShowStartFailed(ServiceKind service) {
  const ServiceTexts& texts = TextsOf(service);
  view_.SetResult(service, texts.startFailed);
  view_.SetAddress(service, "");
  view_.SetHint(service, texts.restartHint);
  view_.ShowButtons(service, false);
  view_.SwitchMenuItems(service, false);
  UpdateServiceStatus("OFF", texts.statusOff, texts.name);
  const auto failure = Of(service).LastFailure();
  if (failure && failure->settings) {
    view_.TellSettingsFault(service, SettingsFaultText(failure->reason));
  }
  // A failed mail start is recorded under the Web server's key: programs that read startflg.dat
  // know it so.
  WriteStartFlag(service == ServiceKind::kMail ? ServiceKind::kWeb : service, false);
}

void ServiceControl::Stop(ServiceKind service) {
  const bool stopped = Of(service).Stop();
  stopped ? ShowStopped(service) : ShowStopFailed(service);
  const ServiceTexts& texts = TextsOf(service);
  UpdateServiceStatus("OFF", texts.statusOff, texts.name);
}

void ServiceControl::ShowStopped(ServiceKind service) {
  const ServiceTexts& texts = TextsOf(service);
  view_.SetResult(service, texts.stopped);
  view_.SetAddress(service, AddressWhenStopped(service));
  if (service == ServiceKind::kWeb) view_.EnableAddress(service, false);
  view_.SetHint(service, texts.startHint);
  view_.ShowButtons(service, false);
  view_.SwitchMenuItems(service, false);
}

void ServiceControl::ShowStopFailed(ServiceKind service) {
  const ServiceTexts& texts = TextsOf(service);
  // A failed mail stop speaks in the Web frame; only the menu items are its own.
  const ServiceKind frame = service == ServiceKind::kMail ? ServiceKind::kWeb : service;
  view_.SetResult(frame, texts.stopFailed);
  view_.SetAddress(frame, "");
  view_.SetHint(frame, texts.stopFailedHint);
  view_.ShowButtons(frame, true);
  view_.SwitchMenuItems(service, true);
}

std::string ServiceControl::AddressWhenStopped(ServiceKind service) {
  const std::string domain = Of(service).Domain();
  switch (service) {
    case ServiceKind::kWeb:
      return "Http://" + domain;
    case ServiceKind::kFtp:
      return domain;
    case ServiceKind::kMail:
      return {};
  }
  return {};
}

void ServiceControl::UpdateServiceStatus(std::string_view state, const std::string& text,
                                         std::string_view service) {
  const bool on = platform::EqualIgnoringCase(state, "ON");
  for (const ServiceKind kind : {ServiceKind::kWeb, ServiceKind::kFtp, ServiceKind::kMail}) {
    if (platform::EqualIgnoringCase(service, TextsOf(kind).name)) {
      view_.SetStatusPanel(kind, on, text);
    }
  }
}

void ServiceControl::WriteStartFlag(ServiceKind key, bool started) {
  const bool written = ModINIOP::WriteIni(program_.File("startflg.dat"), "ServerStatus",
                                          TextsOf(key).flagKey, text::BooleanText(started)) != 0;
  if (!written) program_.errors.LogError("startflg.dat: cannot be written");
}

}  // namespace core
