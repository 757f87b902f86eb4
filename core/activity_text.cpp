#include "core/activity_text.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "text/date_time.h"
#include "text/strings.h"
#include "text/utf8.h"

namespace core {
namespace {

using Kind = net::Activity::Kind;

const char* VerbOf(Kind kind) {
  switch (kind) {
    case Kind::kCommand:
      return "";
    case Kind::kDownload:
      return "下载 ";
    case Kind::kUpload:
      return "上传 ";
    case Kind::kBrowse:
      return "浏览 ";
    case Kind::kProgram:
      return "运行 ";
    case Kind::kDelete:
      return "删除 ";
    case Kind::kRename:
      return "改名 ";
    case Kind::kMakeFolder:
      return "新建文件夹 ";
    case Kind::kRemoveFolder:
      return "删除文件夹 ";
    case Kind::kReceiveMail:
      return "来信 → ";
    case Kind::kCollectMail:
      return "收信 ";
    case Kind::kSignIn:
      return "登录 ";
  }
  return "";
}

const char* NameOf(const std::string& protocol) {
  if (protocol == "HTTP") return "Web";
  return protocol == "FTP" ? "FTP" : "邮件";
}

// Spreadsheets calculate a field that begins like a formula, quoted or not.
std::string HarmlessField(std::string_view text) {
  constexpr std::string_view kFormulaBegins = "=+-@";
  const bool isFormula = !text.empty() && kFormulaBegins.find(text.front()) != text.npos;
  return (isFormula ? "'" : "") + std::string(text);
}

std::string CsvField(std::string_view text) {
  const std::string field = HarmlessField(text);
  if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
  return '"' + text::ReplaceAll(field, "\"", "\"\"") + '"';
}

std::string CsvLine(std::initializer_list<std::string> fields) {
  std::string line;
  for (const std::string& field : fields) {
    if (!line.empty()) line += ',';
    line += CsvField(field);
  }
  return line + "\r\n";
}

std::chrono::seconds DurationOf(const net::EndedActivity& ended) {
  return std::chrono::duration_cast<std::chrono::seconds>(ended.ended - ended.activity.began);
}

std::string CsvLine(const ActivityRecord::Entry& entry) {
  net::Activity activity = entry.activity;
  const std::string subject = std::exchange(activity.detail, {});
  return CsvLine({text::DateTimeText(entry.ended), NameOf(entry.protocol), entry.address,
                  ActivityText(activity), subject,
                  std::to_string(activity.traffic.received + activity.traffic.sent),
                  DurationText(DurationOf(entry)), EndText(entry.end),
                  std::to_string(entry.count)});
}

}  // namespace

std::string ActivityText(const net::Activity& activity) {
  std::string text = VerbOf(activity.kind) + activity.what;
  if (activity.kind == Kind::kReceiveMail && !activity.detail.empty()) {
    text += "（主题：" + activity.detail + "）";
  }
  return text;
}

const char* EndText(net::ActivityEnd end) {
  switch (end) {
    case net::ActivityEnd::kComplete:
      return "完成";
    case net::ActivityEnd::kClientLeft:
      return "对方中断";
    case net::ActivityEnd::kEvicted:
      return "被新连接挤出";
    case net::ActivityEnd::kDisconnected:
      return "已被断开";
    case net::ActivityEnd::kIdle:
      return "闲置太久";
    case net::ActivityEnd::kServiceStopped:
      return "服务已停止";
    case net::ActivityEnd::kNotFound:
      return "没有找到";
    case net::ActivityEnd::kRefused:
      return "没有许可";
    case net::ActivityEnd::kFailed:
      return "失败";
  }
  return "";
}

std::string DurationText(std::chrono::seconds duration) {
  constexpr std::int64_t kMinute = 60;
  constexpr std::int64_t kHour = 60 * kMinute;
  const std::int64_t all = std::max<std::int64_t>(duration.count(), 0);
  const auto part = [](std::int64_t number, const char* unit) {
    return number == 0 ? std::string() : " " + std::to_string(number) + " " + unit;
  };
  if (all < kMinute) return std::to_string(all) + " 秒";
  const std::string text = all < kHour
                               ? part(all / kMinute, "分") + part(all % kMinute, "秒")
                               : part(all / kHour, "小时") + part(all % kHour / kMinute, "分");
  return text.substr(1);
}

std::string CsvOf(const std::deque<ActivityRecord::Entry>& entries) {
  std::string table(text::kByteOrderMark);
  table += CsvLine({"时间", "服务", "地址", "做了什么", "主题", "字节", "用时", "结果", "次数"});
  for (const ActivityRecord::Entry& entry : entries) table += CsvLine(entry);
  return table;
}

}  // namespace core
