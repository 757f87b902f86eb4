#include "ui/pages/service_looks.h"

#include <array>

namespace ui {
namespace {

constexpr std::array<ServiceLooks, core::kServices.size()> kLooks = {{
    {
        .picture = "web",
        .title = "Web 服务",
        .purpose = "发布您的主页，用浏览器就能访问",
        .idle = "Web服务尚未启动。",
        .log = "Web.log",
        .canMove = true,
        .frame = "fraWeb",
        .selector = "fraWebService",
        .selectorPicture = "ImgWeb",
        .selectorLabel = "lblWebIcon",
        .result = "lblWebStart",
        .address = "lblWebAddress",
        .hint = "lblWebInfo",
        .rootDir = "lblWebRootDir",
        .start = "cmdStartWebService",
        .stop = "cmdStopWebService",
        .dns = "cmdWebDns",
        .options = "cmdWebOptions",
    },
    {
        .picture = "ftp",
        .title = "FTP 服务",
        .purpose = "共享文件，供他人下载和上传",
        .idle = "Ftp服务尚未启动。",
        .log = "RunErr.Log",  // the FTP server has no log of its own
        .canMove = true,
        .frame = "fraFtp",
        .selector = "fraFtpService",
        .selectorPicture = "imgFtp",
        .selectorLabel = "lblFtpIcon",
        .result = "lblFtpStart",
        .address = "lblFtpAddress",
        .hint = "lblFtpInfo",
        .rootDir = "lblFtpRootDir",
        .start = "cmdStartFtpService",
        .stop = "cmdStopFtpService",
        .dns = "cmdFtpDns",
        .options = "cmdFtpOptions",
    },
    {
        .picture = "mail",
        .title = "E-Mail 服务",
        .purpose = "为本机用户收发和保存邮件",
        .idle = "E-Mail服务尚未启动。",
        .log = "Mail.log",
        .canMove = false,
        .frame = "fraMail",
        .selector = "fraMailService",
        .selectorPicture = "ImgMail",
        .selectorLabel = "lblMailIcon",
        .result = "lblMailStart",
        .address = "lblMailAddress",
        .hint = "lblMailInfo",
        .rootDir = "lblMailRootDir",
        .start = "cmdStartMailService",
        .stop = "cmdStopMailService",
        .dns = "cmdEmailDns",
        .options = "cmdMailOptions",
    },
}};

}  // namespace

const ServiceLooks& LooksOf(core::ServiceKind service) { return kLooks[core::IndexOf(service)]; }

const char* PictureOf(ServiceState state) {
  constexpr std::array<const char*, 3> kPictures = {"off", "on", "failed"};
  return kPictures[static_cast<std::size_t>(state)];
}

}  // namespace ui
