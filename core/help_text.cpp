#include "core/help_text.h"

#include <vector>

#include "core/command_line.h"
#include "platform/text_case.h"

namespace ModMain {
namespace {

constexpr const char* kVersion = "Tarnwerk " TARNWERK_VERSION;

// The Chinese man page has the same sentences.
constexpr const char* kUsage = R"(个人网络服务器管理程序

用法：tarnwerk [START|STOP] [SHOW] [WEB]
      tarnwerk --help|--version

词与词之间用空格或“/”分隔，不分大小写。别的词只占位置，不起作用。
一个词也没有时，由设置决定是否启动服务、是否停在托盘里。

  START      第一个词：依次启动 Web、邮件、FTP 服务。
  STOP       第一个词：结束当前用户所有正在运行的 Tarnwerk，等它们退出，不做别的。
  SHOW       第二个词：不显示窗口，直接进入托盘。
  WEB        第三个词：在浏览器里打开主页。
  --help     唯一的词：显示这些说明，不做别的。
  --version  唯一的词：显示版本，不做别的。

没有图形界面时只运行服务，并在标准输出上写明哪些服务在运行、地址是什么。
如果要启动的服务一项也没有启动成功，程序就此结束。)";

}  // namespace

std::optional<std::string> RequestedText(std::string_view commandLine) {
  const std::vector<std::string> words = GetCommandLineWords(commandLine);
  if (words.size() != 2) return std::nullopt;
  if (platform::EqualIgnoringCase(words[1], "--version")) return kVersion;
  if (!platform::EqualIgnoringCase(words[1], "--help")) return std::nullopt;
  return std::string(kVersion) + "，" + kUsage;
}

}  // namespace ModMain
