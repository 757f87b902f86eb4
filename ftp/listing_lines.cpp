#include "ftp/listing_lines.h"

#include <array>
#include <ctime>

namespace ModFtp {
namespace {

constexpr std::string_view kFolderRights = "dr-xr-xr-x  1 owner group  ";
constexpr std::string_view kFileRights = "-r-xr-xr-x  1 owner group  ";

// English whatever the host's language: clients look for these months.
constexpr std::array<std::string_view, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::string TwoDigits(int number) {
  return std::string(number < 10 ? "0" : "") + std::to_string(number);
}

// "Mmm dd yyyy", local time.
std::string DateText(std::chrono::system_clock::time_point time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  // The program has one thread that asks for the time, so the shared result is ours alone.
  const std::tm* local = std::localtime(&seconds);
  if (local == nullptr) return {};
  const std::string month(kMonths.at(static_cast<std::size_t>(local->tm_mon)));
  return month + " " + TwoDigits(local->tm_mday) + " " + std::to_string(local->tm_year + 1900);
}

}  // namespace

std::string ListingLine(std::string_view name, bool isFolder, const FileInfo& info) {
  std::string line(isFolder ? kFolderRights : kFileRights);
  line += " " + std::to_string(info.size) + " " + DateText(info.created) + " ";
  line += name;
  return line + "\r\n";
}

bool IsListed(std::string_view name, std::string_view lastCommand) {
  return lastCommand != "CWD" || name.find('.') != std::string_view::npos;
}

}  // namespace ModFtp
