#include "core/problem_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <vector>

#include "text/printable_text.h"

namespace core {
namespace {

constexpr std::size_t kMostOfLine = 5000;  // bytes; the program logs no longer ones
constexpr std::size_t kMostOfPiece = 200;  // of a message, in an explanation
constexpr std::size_t kMostOfExplanation = 1000;

constexpr const char* kWeb = "Web 服务";
constexpr const char* kFtp = "FTP 服务";
constexpr const char* kMail = "E-Mail 服务";
constexpr const char* kSettings = "设置";
constexpr const char* kWindow = "窗口";
constexpr const char* kOther = "其他";

// The usual messages of the systems.
struct SystemReason {
  const char* contained;
  const char* text;
  const char* alone;  // where the message is the whole line; empty if nothing more is known
};

constexpr const char* kPortTaken = "端口已被另一个程序占用";
constexpr const char* kPortTakenAlone =
    "一项服务没有启动：它的端口已被另一个程序占用。请先退出那个程序，或在选项中改用别的端口。";
constexpr const char* kNoRight = "没有权限";
constexpr const char* kNoRightAlone =
    "没有权限。如果是在启动服务时，多半是端口在 1024 以下，需要系统的许可；否则是有文件不许读写。";
constexpr const char* kNoPortRightAlone =
    "一项服务没有启动：系统不许使用它的端口。请在选项中改用别的端口。";
constexpr const char* kDiskFull = "磁盘已满";
constexpr const char* kMissing = "找不到这个文件或文件夹";
constexpr const char* kMissingAlone = "找不到需要的文件或文件夹。它可能刚被删除或改名。";
constexpr const char* kInUse = "文件正被另一个程序使用";
constexpr const char* kTooManyOpen = "同时打开的文件和连接太多";
constexpr const char* kTooManyOpenAlone =
    "同时打开的文件和连接太多，有的请求没有得到回答。连接减少以后会自己恢复。";
constexpr const char* kNoMemory = "内存不够";

constexpr SystemReason kReasons[] = {
    {"Address already in use", kPortTaken, kPortTakenAlone},
    {"Only one usage of each socket address", kPortTaken, kPortTakenAlone},
    {"套接字地址", kPortTaken, kPortTakenAlone},
    {"forbidden by its access permissions", "系统不许使用这个端口", kNoPortRightAlone},
    {"访问权限不允许的方式", "系统不许使用这个端口", kNoPortRightAlone},
    {"Permission denied", kNoRight, kNoRightAlone},
    {"Operation not permitted", kNoRight, ""},
    {"Access is denied", kNoRight, ""},
    {"Access denied", kNoRight, ""},
    {"拒绝访问", kNoRight, ""},
    {"No space left on device", kDiskFull, "磁盘已满，有内容没有写下。请腾出空间。"},
    {"not enough space on the disk", kDiskFull, "磁盘已满，有内容没有写下。请腾出空间。"},
    {"磁盘空间不足", kDiskFull, "磁盘已满，有内容没有写下。请腾出空间。"},
    {"Disk quota exceeded", "磁盘配额已用完", ""},
    {"Too many open files", kTooManyOpen, kTooManyOpenAlone},
    {"No such file or directory", kMissing, kMissingAlone},
    {"cannot find the file specified", kMissing, kMissingAlone},
    {"cannot find the path specified", kMissing, kMissingAlone},
    {"找不到指定的", kMissing, kMissingAlone},
    {"used by another process", kInUse, ""},
    {"另一个程序正在使用此文件", kInUse, ""},
    {"Read-only file system", "磁盘是只读的", ""},
    {"Is a directory", "那里是一个文件夹，不是文件", ""},
    {"Not a directory", "路径中有一段不是文件夹", ""},
    {"Directory not empty", "文件夹里还有别的东西", ""},
    {"File exists", "已有同名的文件或文件夹", ""},
    {"File name too long", "名称太长", ""},
    {"File too large", "文件太大", ""},
    {"Input/output error", "磁盘读写出错", "磁盘读写出错。请检查磁盘，并备份重要的文件。"},
    {"Exec format error", "它不是可以运行的程序", ""},
    {"Cannot allocate memory", kNoMemory, ""},
    {"bad_alloc", kNoMemory, "内存不够，一个请求没有处理完。"},
    {"Cannot assign requested address", "这台电脑没有这个地址", ""},
    {"Connection reset by peer", "对方断开了连接", "对方中途断开了连接，服务不受影响。"},
    {"Broken pipe", "对方断开了连接", "对方中途断开了连接，服务不受影响。"},
    {"the file is torn", "内容有缺损", ""},
};

// The messages of the program. In `pattern`, "*" is any text and "@" a message of the system; in
// `text` they are $1, $2 and so on. The first that fits counts.
struct Kind {
  const char* pattern;
  const char* what;
  const char* text;
};
constexpr Kind kKinds[] = {
    {"Server.ini [*]: cannot be read: @", kSettings,
     "设置文件 Server.ini 无法读取：$2。在它能被读取之前，服务不会启动，设置也不会改写。"},
    {"Server.ini [FtpServer Options] *: cannot convert \"*\"", kFtp,
     "设置文件 Server.ini 中 $1 的值“$2”无法使用。改正之前，FTP 服务不会启动。"},
    {"Server.ini [*] *: cannot convert \"*\"", kSettings,
     "设置文件 Server.ini 的 [$1] 中，$2 的值“$3”无法使用，沿用原来的值。请在选项中重新填写。"},
    {"Server.ini [WebServer Options] *: \"*\" is not from * to *", kSettings,
     "设置文件 Server.ini 中，$1 的值“$2”应为 $3 到 $4 的数字，它没有作用。请在 Web "
     "服务的选项中重新填写。"},
    {"Settings not saved: @", kSettings, "选项没有保存，原来的设置没有改动：$1。"},
    {"startflg.dat: cannot be written: @", kSettings,
     "没有记下哪些服务在运行，下次不一定自动启动它们：$1。"},
    {"Window toolkit: *assertion failed: *", kWindow, "窗口的一项内部检查没有通过：$2"},
    {"Window toolkit: *", kWindow, "窗口遇到一个小问题，服务不受影响：$1"},
    {"TIPOFDAY.TXT: @", kWindow, "每日提示的文件 TIPOFDAY.TXT 无法读取：$1。"},
    {"IndexFN.Log: more than 11 lines", kWeb,
     "默认文档的列表 IndexFN.Log 超过 11 行，多出的没有读取。"},
    {"IndexFN.Log: @", kWeb, "默认文档的列表 IndexFN.Log 无法读取：$1。"},
    {"cgi-bin: too many requests wait for a program", kWeb,
     "等待 CGI 程序的请求太多，多出的没有处理。"},
    {"TempFileIn: @", kWeb, "表单的内容没有交给 CGI 程序：$1。"},
    {"invalid URL escape at character *", kWeb,
     "收到的表单在第 $1 个字符处无法解读，没有处理。毛病在对方的程序。"},
    {"Content-Length without a line end", kWeb, "收到的请求不完整，没有处理。毛病在对方的程序。"},
    {"invalid Content-Length: *", kWeb,
     "收到的请求写明的长度“$1”无效，没有处理。毛病在对方的程序。"},
    {"the last piece of the file has no bytes", kWeb,
     "一个文件的大小正好是 10240 字节的倍数，它已全部发出。不用处理。"},
    {"*\\cgi-bin\\*: @", kWeb, "CGI 程序 $2 没有运行：$3。"},
    {"Search\\*: @", kWeb, "网页 $1 没有复制到 Search 文件夹：$2。"},
    {"*: cannot be written: @", kMail, "邮件用户没有保存，文件夹 $1 无法写入：$2。"},
    {"*: too many messages wait to be unpacked", kMail,
     "等待拆开的邮件太多，$1 没有拆开。邮件还在邮箱里。"},
    {"*unpack.lst: * lines name no message", kMail,
     "待拆邮件的列表 unpack.lst 有 $2 行无法解读，已略过。"},
    {"*unpack.lst: @", kMail, "待拆邮件的列表 unpack.lst 无法读写：$2。"},
    {"no free entry for the recipient *", kMail, "一封邮件的收件人太多，没有 $1 的一份。"},
    {"no message number: *", kMail, "邮件程序要取的邮件编号“$1”无效。"},
    {"more messages than can be listed", kMail, "一个邮箱里的邮件太多，列不出来。请收走一些。"},
    {"the size of a mailbox is too large: *", kMail,
     "一个邮箱里的邮件共有 $1 字节，列不出来。请收走一些。"},
    {"the number of messages is too large: *", kMail,
     "一个邮箱里有 $1 封邮件，列不出来。请收走一些。"},
    {"*.eml: @", kMail, "邮件 $1.eml 无法读写：$2。"},
    {"*\\User\\*: @", kMail, "邮箱中的 $2 无法读写或删除：$3。"},
    {"*hosts: @", kOther, "域名没有登记，系统的 hosts 文件无法读取：$2。服务照常运行。"},
};

const SystemReason* ReasonIn(std::string_view message) {
  const auto* found =
      std::find_if(std::begin(kReasons), std::end(kReasons), [&](const SystemReason& each) {
        return message.find(each.contained) != std::string_view::npos;
      });
  return found == std::end(kReasons) ? nullptr : found;
}

std::string Piece(std::string_view text) { return text::Printable(text, kMostOfPiece); }

// For the middle of a sentence.
std::string ReasonText(std::string_view message) {
  if (const SystemReason* reason = ReasonIn(message)) return reason->text;
  if (message.ends_with('.')) message.remove_suffix(1);
  return Piece(message);
}

// The text before the next placeholder, removed from `pattern`.
std::string_view TakeFixed(std::string_view& pattern) {
  const std::size_t end = std::min(pattern.find_first_of("*@"), pattern.size());
  const std::string_view fixed = pattern.substr(0, end);
  pattern.remove_prefix(end);
  return fixed;
}

// What `message` has in place of the placeholders; none if it does not fit.
std::optional<std::vector<std::string>> Match(std::string_view message, std::string_view pattern) {
  const std::string_view first = TakeFixed(pattern);
  if (!message.starts_with(first)) return std::nullopt;
  message.remove_prefix(first.size());
  std::vector<std::string> pieces;
  while (!pattern.empty()) {
    const bool isReason = pattern.front() == '@';
    pattern.remove_prefix(1);
    const std::string_view next = TakeFixed(pattern);
    std::size_t end = message.find(next);
    if (pattern.empty()) {
      end = message.ends_with(next) ? message.size() - next.size() : std::string_view::npos;
    }
    if (end == std::string_view::npos) return std::nullopt;
    const std::string_view piece = message.substr(0, end);
    pieces.push_back(isReason ? ReasonText(piece) : Piece(piece));
    message.remove_prefix(end + next.size());
  }
  return message.empty() ? std::optional(pieces) : std::nullopt;
}

std::string Filled(std::string_view text, const std::vector<std::string>& pieces) {
  std::string filled;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '$') {
      filled += pieces.at(static_cast<std::size_t>(text[++i] - '1'));
    } else {
      filled += text[i];
    }
  }
  return filled;
}

std::string ExplainReason(std::string_view message, const SystemReason& reason) {
  const std::size_t colon = message.find(": ");
  const std::string text = reason.text;
  if (colon < message.find(reason.contained)) {
    return Piece(message.substr(0, colon)) + "：" + text + "。";
  }
  return *reason.alone == '\0' ? text + "。" : reason.alone;
}

void ExplainMessage(std::string_view message, Problem& problem) {
  for (const Kind& kind : kKinds) {
    if (const auto pieces = Match(message, kind.pattern)) {
      problem.what = kind.what;
      problem.explanation = Filled(kind.text, *pieces);
      return;
    }
  }
  const SystemReason* reason = ReasonIn(message);
  problem.what = kOther;
  problem.explanation = reason != nullptr ? ExplainReason(message, *reason)
                                          : text::Printable(message, kMostOfExplanation);
}

// Takes the time that a line of the program begins with; empty if it is another's.
std::string TakeTime(std::string_view& line) {
  constexpr std::string_view kBefore = "在 ";
  constexpr std::string_view kTime = "0000-00-00 00:00:00";
  constexpr std::string_view kAfter = "捕获错误: ";
  if (!line.starts_with(kBefore)) return {};
  const std::string_view time = line.substr(kBefore.size(), kTime.size());
  const auto isLike = [](char c, char like) {
    return like == '0' ? c >= '0' && c <= '9' : c == like;
  };
  const std::string_view rest = line.substr(kBefore.size() + time.size());
  const bool isTime = std::equal(time.begin(), time.end(), kTime.begin(), kTime.end(), isLike);
  if (!isTime || !rest.starts_with(kAfter)) return {};
  line = rest.substr(kAfter.size());
  return std::string(time);
}

}  // namespace

Problem Explain(std::string_view line) {
  Problem problem;
  problem.line = text::Printable(line, kMostOfLine);
  std::string_view message = problem.line;
  problem.time = TakeTime(message);
  ExplainMessage(message, problem);
  return problem;
}

}  // namespace core
