#include "core/start_diagnosis.h"

#include "platform/system_message.h"
#include "settings/server_ini.h"
#include "text/strings.h"

namespace core {
namespace {

using Remedy = Diagnosis::Remedy;

std::string PortText(const StartFailure& failure) { return "端口 " + std::to_string(failure.port); }

bool NeedsBrowsersPort(ServiceKind service, const Circumstances& circumstances) {
  return service == ServiceKind::kWeb && !circumstances.answersWithHttp;
}

std::string TheTick() { return std::string("勾选“") + kForBrowsers + "”"; }

struct Advice {
  std::string text;
  Remedy remedy;
};

// `free`: what frees the port.
Advice AdviceOnTakenPort(bool needsBrowsersPort, const StartFailure& failure,
                         const std::string& free) {
  if (!needsBrowsersPort) {
    return {"请先" + free + "，\n或在选项中改用别的端口，然后再次启动。", Remedy::kChangePort};
  }
  if (failure.port == kBrowsersPort) {
    return {"请先" + free +
                "，然后再试一次。\n浏览器只在端口 80 上显示这种网页；想改用别的端口，\n请在选项中" +
                TheTick() + "。",
            Remedy::kRetry};
  }
  return {"请在选项中改用端口 80，浏览器只在它上面显示这种网页；\n或者" + TheTick() +
              "，改用别的端口。然后再次启动。",
          Remedy::kChangePort};
}

Diagnosis ExplainTaken(bool needsBrowsersPort, const StartFailure& failure, const PortUser& user) {
  const std::string port = PortText(failure);
  if (!user.ownService.empty()) {
    const Advice advice = AdviceOnTakenPort(needsBrowsersPort, failure, "停止 " + user.ownService);
    return {
        port + " 已由\n" + user.ownService + "使用",
        port + " 已由本程序的 " + user.ownService + "使用，两者不能共用一个端口。\n" + advice.text,
        advice.remedy, "", failure.port};
  }
  const Advice advice = AdviceOnTakenPort(needsBrowsersPort, failure, "退出那个程序");
  const std::optional<platform::PortOwner>& owner = user.process;
  if (!owner) {
    return {port + " 已被\n另一个程序占用", port + " 已被另一个程序占用。\n" + advice.text,
            advice.remedy, "", failure.port};
  }
  const std::string name = owner->program.empty() ? "另一个程序" : "“" + owner->program + "”";
  return {port + " 已被\n" + name + "占用",
          port + " 已被" + name + "占用（进程 " + std::to_string(owner->process) + "）。\n" +
              advice.text,
          advice.remedy, "", failure.port};
}

// Quoted for the shell in which the command will be pasted.
std::string Quoted(const std::string& path) {
  return "'" + text::ReplaceAll(path, "'", "'\\''") + "'";
}

Diagnosis ExplainNoRight(bool needsBrowsersPort, const StartFailure& failure,
                         const std::string& executable) {
  const std::string port = PortText(failure);
  const std::string otherwise = needsBrowsersPort ? "。" : "；\n或在选项中改用 1024 以上的端口。";
  return {port + " 需要\n系统的许可",
          "系统只让有许可的程序使用 1024 以下的端口，\n" + port +
              " 也在其中。请在终端中运行复制的命令\n来给予许可，然后重新运行本程序" + otherwise,
          Remedy::kCopyCommand, "sudo setcap cap_net_bind_service=+ep " + Quoted(executable)};
}

Diagnosis ExplainInvalid(const StartFailure& failure) {
  return {"端口号无效",
          "设置文件 Server.ini 中的端口不是 1 到 32767 的数字。\n请在选项中填写端口，再次启动。",
          Remedy::kChangePort, "", failure.port};
}

Diagnosis ExplainUnreadable(const StartFailure& failure) {
  Diagnosis diagnosis = ExplainSettings(failure.reason);
  diagnosis.remedy = Remedy::kRetry;
  return diagnosis;
}

}  // namespace

Diagnosis Explain(ServiceKind service, const StartFailure& failure, const PortUser& user,
                  const Circumstances& circumstances) {
  if (failure.settings) return ExplainUnreadable(failure);
  if (failure.port <= 0 && failure.reason == std::errc::invalid_argument) {
    return ExplainInvalid(failure);
  }
  const bool needsBrowsersPort = NeedsBrowsersPort(service, circumstances);
  switch (platform::TroubleOf(failure.reason)) {
    case platform::ListenTrouble::kPortTaken:
      return ExplainTaken(needsBrowsersPort, failure, user);
    case platform::ListenTrouble::kNoRight:
      return ExplainNoRight(needsBrowsersPort, failure, circumstances.executable);
    case platform::ListenTrouble::kOther:
      break;
  }
  return {PortText(failure) + "\n无法使用",
          PortText(failure) + " 无法使用。系统的说明：" + platform::SystemMessage(failure.reason) +
              "\n每次失败的原因都记录在程序目录的 RunErr.Log 中。",
          Remedy::kRetry};
}

std::string SettingsFaultText(const std::error_code& fault) {
  if (fault == settings::TornSettings()) return "设置文件 Server.ini 不完整，它的内容有缺损。";
  return "设置文件 Server.ini 无法读取：" + platform::SystemMessage(fault);
}

Diagnosis ExplainSettings(const std::error_code& fault) {
  return {"设置文件\n无法读取",
          SettingsFaultText(fault) +
              "\n在它能被读取之前，服务不会启动，设置也不会改写；"
              "\n正在运行的服务沿用原来的设置。请检查程序目录中的这个文件。",
          Remedy::kNone, ""};
}

std::string UnsavedText(const std::error_code& error) {
  const bool torn = error == settings::TornSettings();
  return "设置没有保存，原来的内容没有改动。\n" +
         (torn ? SettingsFaultText(error) : "系统的说明：" + platform::SystemMessage(error)) +
         "\n请检查程序目录中的文件是否可以读写，然后再按“确定”。";
}

}  // namespace core
