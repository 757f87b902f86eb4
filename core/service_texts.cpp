#include "core/service_texts.h"

namespace core {
namespace {

constexpr ServiceTexts kWebTexts = {
    .name = "Web",
    .flagKey = "WebServer",
    .startFailed = "Web发布失败。请检查您的Web与网络设置。",
    .restartHint = "点击“启动”您可以重新启动Web服务。",
    .started = "Web发布已经启动。 您的主页在：",
    .stopHint = "点击“停止”您可以停止Web服务。",
    .stopFailed = "Web服务停止失败。请检查网络设置然后重新启动计算机。",
    .stopFailedHint = "点击“停止”您可以停止Web服务。",
    .stopped = "Web服务已经停止。您的主页是： ",
    .startHint = "点击“启动”您可以开始Web服务。",
    .statusOn = "Web服务：ON",
    .statusOff = "Web服务：OFF",
};

constexpr ServiceTexts kFtpTexts = {
    .name = "Ftp",
    .flagKey = "FtpServer",
    .startFailed = "Ftp服务启动失败。请检查您的FTP与网络设置。",
    .restartHint = "点击“启动”您可以重新启动FTP服务。",
    .started = "Ftp服务已经启动。 您的Ftp地址是：",
    .stopHint = "点击“停止”您可以停止Ftp服务。",
    .stopFailed = "FTP服务停止失败。请检查网络设置然后重新启动计算机。",
    .stopFailedHint = "点击“停止”您可以停止FTP服务。",
    .stopped = "Ftp服务已经停止。您的FTP地址是： ",
    .startHint = "点击“启动”您可以开始FTP服务。",
    .statusOn = "Ftp服务：ON",
    .statusOff = "Ftp服务：OFF",
};

constexpr ServiceTexts kMailTexts = {
    .name = "Mail",
    .flagKey = "MailServer",
    .startFailed = "E-Mail服务启动失败。请检查您的E-Mail与网络设置。",
    .restartHint = "点击“启动”您可以重新启动E-Mail服务。",
    .started = "E-Mail服务已经启动。",
    .stopHint = "点击“停止”您可以停止E-Mail服务。",
    .stopFailed = "E-Mail服务停止失败。请检查网络设置然后重新启动计算机。",
    .stopFailedHint = "点击“停止”您可以停止E-Mail服务。",
    .stopped = "E-Mail服务已经停止。您的E-Mail地址： ",
    .startHint = "点击“启动”您可以开始E-Mail服务。",
    .statusOn = "Mail服务：ON",
    .statusOff = "Mail服务：OFF",
};

}  // namespace

const ServiceTexts& TextsOf(ServiceKind service) {
  switch (service) {
    case ServiceKind::kWeb:
      return kWebTexts;
    case ServiceKind::kFtp:
      return kFtpTexts;
    case ServiceKind::kMail:
      return kMailTexts;
  }
  return kWebTexts;
}

std::string AddressText(ServiceKind service, const std::string& domain) {
  switch (service) {
    case ServiceKind::kWeb:
      return "Http://" + domain;
    case ServiceKind::kFtp:
      return "ftp://" + domain;
    case ServiceKind::kMail:
      return "SMTP:" + domain + "  POP3:" + domain;
  }
  return {};
}

}  // namespace core
