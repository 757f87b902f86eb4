#pragma once

// What clients do, and did, in words for the user.

#include <chrono>
#include <deque>
#include <string>

#include "core/activity_record.h"
#include "net/connection_report.h"

namespace core {

/// "下载 假期视频.mp4", "来信 → wang（主题：…）"; a command as it was sent.
std::string ActivityText(const net::Activity& activity);

/// "完成", "对方中断", …
const char* EndText(net::ActivityEnd end);

/// "8 秒", "3 分 20 秒", "1 小时 5 分".
std::string DurationText(std::chrono::seconds duration);

/// A table for spreadsheets (RFC 4180, UTF-8 with a byte order mark), a line per entry in their
/// order. No field is taken for a formula.
std::string CsvOf(const std::deque<ActivityRecord::Entry>& entries);

}  // namespace core
