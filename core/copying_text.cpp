#include "core/copying_text.h"

#include <algorithm>

#include "core/traffic_text.h"
#include "files/missing.h"
#include "platform/system_message.h"
#include "text/printable_text.h"

namespace core {
namespace {

using files::Copying;
using Why = Copying::Why;

constexpr std::size_t kMostName = 60;  // bytes
constexpr std::size_t kMostLines = 3;

std::string Count(std::uint64_t files) { return " " + std::to_string(files) + " 个"; }

std::string NameOf(const std::string& path) {
  return text::Printable(path.substr(path.find_last_of('\\') + 1), kMostName);
}

std::string SystemText(const char* what, const std::error_code& error) {
  return std::string(what) + "（系统的说明：" + platform::SystemMessage(error) + "）";
}

std::string ReasonOfReading(const std::error_code& error) {
  if (files::IsMissing(error)) return "不存在";
  if (error == std::errc::permission_denied) return "没有读取它的权限";
  if (error == std::errc::operation_not_supported) return "不是普通的文件";
  return SystemText("不能读取", error);
}

std::string ReasonOfWriting(const std::error_code& error) {
  if (files::IsMissing(error)) return "要放入的文件夹不存在";
  if (error == std::errc::permission_denied) return "没有在那里写入的权限";
  if (error == std::errc::no_space_on_device) return "磁盘已满";
  return SystemText("不能写入", error);
}

std::string Reason(const Copying::Problem& problem) {
  switch (problem.why) {
    case Why::kUnreadable:
      return ReasonOfReading(problem.error);
    case Why::kUnwritable:
      return ReasonOfWriting(problem.error);
    case Why::kLink:
      return "只是通向别处的链接";
    case Why::kTooDeep:
      return "在太多层文件夹里面";
    case Why::kIntoItself:
      return "不能复制到它自己里面";
    case Why::kOntoItself:
      return "已经在那里";
    case Why::kOccupied:
      return "那里有同名的文件或文件夹";
  }
  return {};
}

}  // namespace

std::string CopyingText(const Copying::Progress& progress) {
  if (!progress.isCounted) return "正在清点：已有" + Count(progress.files) + "文件";
  // The folders may have changed since they were counted.
  const std::uint64_t files = std::max(progress.file, progress.files);
  const std::uint64_t bytes = std::max(progress.bytes, progress.allBytes);
  return "正在复制第" + Count(progress.file) + "，共" + Count(files) + "（" +
         ByteText(progress.bytes) + " / " + ByteText(bytes) + "）：" + NameOf(progress.path);
}

int ShareOf(const Copying::Progress& progress, int whole) {
  if (!progress.isCounted || progress.allBytes == 0) return 0;
  const double share = static_cast<double>(progress.bytes) / static_cast<double>(progress.allBytes);
  return static_cast<int>(std::min(share, 1.0) * whole);
}

std::string CopiedText(const Copying::Report& report) {
  std::string text = report.cancelled ? "已取消。" : report.stopped ? "没有复制完。" : "";
  text += "已复制" + Count(report.copied) + "文件。";
  if (report.skipped > 0) text += "跳过了" + Count(report.skipped) + "。";
  // The one that stopped it is the last.
  const std::size_t lines = std::min(report.problems.size(), kMostLines);
  for (auto problem = report.problems.end() - static_cast<std::ptrdiff_t>(lines);
       problem != report.problems.end(); ++problem) {
    text += "\n“" + NameOf(problem->name) + "”没有复制：" + Reason(*problem) + "。";
  }
  if (report.left > lines) text += "\n另有" + Count(report.left - lines) + "没有复制。";
  return text;
}

}  // namespace core
