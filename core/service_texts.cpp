#include "core/service_texts.h"

#include "text/strings.h"

namespace core {
namespace {

constexpr std::array<ServiceTexts, kServices.size()> kTexts = {{
    {
        .name = "Web",
        .flagKey = "WebServer",
        .statusOn = "Web服务：ON",
        .statusOff = "Web服务：OFF",
        .address = "Http://*",
        .addressWhenStopped = "Http://*",
        .started = {"Web发布已经启动。 您的主页在：", "点击“停止”您可以停止Web服务。"},
        .startFailed = {"Web发布失败。请检查您的Web与网络设置。",
                        "点击“启动”您可以重新启动Web服务。"},
        .stopped = {"Web服务已经停止。您的主页是： ", "点击“启动”您可以开始Web服务。"},
        .stopFailed = {"Web服务停止失败。请检查网络设置然后重新启动计算机。",
                       "点击“停止”您可以停止Web服务。"},
    },
    {
        .name = "Ftp",
        .flagKey = "FtpServer",
        .statusOn = "Ftp服务：ON",
        .statusOff = "Ftp服务：OFF",
        .address = "ftp://*",
        .addressWhenStopped = "*",
        .started = {"Ftp服务已经启动。 您的Ftp地址是：", "点击“停止”您可以停止Ftp服务。"},
        .startFailed = {"Ftp服务启动失败。请检查您的FTP与网络设置。",
                        "点击“启动”您可以重新启动FTP服务。"},
        .stopped = {"Ftp服务已经停止。您的FTP地址是： ", "点击“启动”您可以开始FTP服务。"},
        .stopFailed = {"FTP服务停止失败。请检查网络设置然后重新启动计算机。",
                       "点击“停止”您可以停止FTP服务。"},
    },
    {
        .name = "Mail",
        .flagKey = "MailServer",
        .statusOn = "Mail服务：ON",
        .statusOff = "Mail服务：OFF",
        .address = "SMTP:*  POP3:*",
        .addressWhenStopped = "",
        .started = {"E-Mail服务已经启动。", "点击“停止”您可以停止E-Mail服务。"},
        .startFailed = {"E-Mail服务启动失败。请检查您的E-Mail与网络设置。",
                        "点击“启动”您可以重新启动E-Mail服务。"},
        .stopped = {"E-Mail服务已经停止。您的E-Mail地址： ", "点击“启动”您可以开始E-Mail服务。"},
        .stopFailed = {"E-Mail服务停止失败。请检查网络设置然后重新启动计算机。",
                       "点击“停止”您可以停止E-Mail服务。"},
    },
}};

}  // namespace

const ServiceTexts& TextsOf(ServiceKind service) { return kTexts[IndexOf(service)]; }

const OutcomeTexts& TextsOf(const Outcome& outcome) {
  const ServiceTexts& texts = TextsOf(outcome.service);
  switch (outcome.event) {
    case Outcome::Event::kStarted:
      return texts.started;
    case Outcome::Event::kStartFailed:
      return texts.startFailed;
    case Outcome::Event::kStopped:
      return texts.stopped;
    case Outcome::Event::kStopFailed:
      break;
  }
  return texts.stopFailed;
}

std::string StatusText(const Outcome& outcome) {
  const ServiceTexts& texts = TextsOf(outcome.service);
  return outcome.event == Outcome::Event::kStarted ? texts.statusOn : texts.statusOff;
}

std::string AddressText(ServiceKind service, const std::string& domain) {
  return text::ReplaceAll(TextsOf(service).address, "*", domain);
}

std::string AddressTextWhenStopped(ServiceKind service, const std::string& domain) {
  return text::ReplaceAll(TextsOf(service).addressWhenStopped, "*", domain);
}

}  // namespace core
