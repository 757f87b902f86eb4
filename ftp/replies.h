#pragma once

// Every fixed text that the FTP server sends, without its line end. Clients and scripts match them
// literally, so the bare codes, the unusual codes and the trailing blanks must not be corrected.

#include <string>
#include <string_view>

#include "text/code_page.h"

namespace ModFtp::replies {

inline constexpr std::string_view kGreeting = "220 连接FTP服务器成功 ";

inline constexpr std::string_view kUser =
    "331 Anonymous access allowed, send identity (e-mail name) as password. ";
inline constexpr std::string_view kPass = "230 Anonymous user logged in. ";
inline constexpr std::string_view kNamed = "331 请输入密码.";  // these where clients sign in
inline constexpr std::string_view kSignedIn = "230 登录成功.";
inline constexpr std::string_view kWrongPassword = "530 用户名或密码不正确.";
inline constexpr std::string_view kBusy = "530 登录的人太多，请稍后再试.";
inline constexpr std::string_view kNotSignedIn = "530 请先登录.";
inline constexpr std::string_view kQuit = "221 再见";
inline constexpr std::string_view kDone = "200 ";
inline constexpr std::string_view kUnknown = "500 ";
inline constexpr std::string_view kSystem = "421 ";
inline constexpr std::string_view kSiteHelp = "421 ";
inline constexpr std::string_view kSize = "350 ";
inline constexpr std::string_view kTypeFailed = "504 ";
inline constexpr std::string_view kRestart = "500 Restarting at ";  // + the offset asked for

// Directories
inline constexpr std::string_view kPwdBegin = "257 \"";  // + directory + kPwdEnd
inline constexpr std::string_view kPwdEnd = "\" command successful. ";
inline constexpr std::string_view kPwdFailed = "502 命令没有实现. ";
inline constexpr std::string_view kCwd = "250 CWD command success.";
inline constexpr std::string_view kCwdFailedBegin = "550 ";  // + directory + kCwdFailedEnd
inline constexpr std::string_view kCwdFailedEnd = ": The system cannot find the file specified. .";
inline constexpr std::string_view kMkdBegin = "257 ";  // + the current directory + kMkdEnd
inline constexpr std::string_view kMkdEnd = "已经创建";
inline constexpr std::string_view kMkdFailed = "550 此文件夹为只读文件夹.";
inline constexpr std::string_view kRmd = "250 文件夹已经删除.";
inline constexpr std::string_view kRmdFailed = "550 请求文件操作无法执行（无访问权）.";

// Files
inline constexpr std::string_view kDele = "250 文件已删除.";
inline constexpr std::string_view kDeleFailed =
    "550 请求文件操作无法执行.";  // + the system's reason
inline constexpr std::string_view kRnfr = "350 ";
inline constexpr std::string_view kRnfrFailed = "550 无访问权";
inline constexpr std::string_view kRnto = "250 ";
inline constexpr std::string_view kRntoFailed = "502 ";

// Data connections
inline constexpr std::string_view kPortFailed = "530 暂时无法连接.";
inline constexpr std::string_view kPasv = "227 ";  // + address and port
inline constexpr std::string_view kSending = "150 Opening ASCII mode data connection for /bin/ls.";
inline constexpr std::string_view kReceiving = "150 数据连接已经打开，可以发送数据.";
inline constexpr std::string_view kList = "226 Transfer complete.";
inline constexpr std::string_view kListFailed = "451 ";
inline constexpr std::string_view kRetr = "226 ";
inline constexpr std::string_view kRetrFailed = "426 ";
inline constexpr std::string_view kStor = "226 stor command completed";
inline constexpr std::string_view kStorFailed = "550 无访问权，不能上传文件！ ";

}  // namespace ModFtp::replies

namespace ModFtp {

/// A reply as it is sent: in the system code page, with its line end.
inline std::string ReplyLine(std::string_view text) { return text::ToSystem(text) + "\r\n"; }

}  // namespace ModFtp
