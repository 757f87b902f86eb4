#include "ftp/listing_lines.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace ModFtp {
namespace {

constexpr std::string_view kFolderRights = "dr-xr-xr-x  1 owner group  ";
constexpr std::string_view kFileRights = "-r-xr-xr-x  1 owner group  ";

// English in every locale: clients look for these names.
constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string TwoDigits(int number) {
  return std::string(number < 10 ? "0" : "") + std::to_string(number);
}

std::string FormatDate(std::time_t seconds) {
  // localtime shares its result, but only one thread of the program calls it.
  const std::tm* local = std::localtime(&seconds);
  if (local == nullptr) return {};
  const std::string month(kMonths.at(static_cast<std::size_t>(local->tm_mon)));
  return month + " " + TwoDigits(local->tm_mday) + " " + std::to_string(local->tm_year + 1900);
}

// "Mmm dd yyyy", local time. The last result is kept because localtime checks the time zone on each
// call, and files that were copied together were mostly created in the same minute.
std::string DateText(std::chrono::system_clock::time_point time) {
  static std::chrono::sys_time<std::chrono::minutes> knownMinute;
  static std::string knownDate;
  const auto minute = std::chrono::floor<std::chrono::minutes>(time);
  if (minute != knownMinute || knownDate.empty()) {
    knownDate = FormatDate(std::chrono::system_clock::to_time_t(time));
    knownMinute = minute;
  }
  return knownDate;
}

bool BreaksLine(char c) { return c == '\r' || c == '\n'; }

}  // namespace

std::string ListingLine(std::string_view name, bool isFolder, const FileInfo& info) {
  std::string line(isFolder ? kFolderRights : kFileRights);
  line += " " + std::to_string(info.size) + " " + DateText(info.created) + " ";
  const std::size_t nameBegin = line.size();
  line += name;
  std::replace_if(line.begin() + static_cast<std::ptrdiff_t>(nameBegin), line.end(), BreaksLine,
                  '?');
  return line + "\r\n";
}

bool IsListed(std::string_view name, std::string_view lastCommand) {
  return lastCommand != "CWD" || name.find('.') != std::string_view::npos;
}

}  // namespace ModFtp
