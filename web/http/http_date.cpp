#include "web/http/http_date.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

namespace ModWeb {
namespace {

using namespace std::chrono;

constexpr std::array<const char*, 7> kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<const char*, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// The number at a position; -1 if there is none of that many digits.
int NumberAt(std::string_view text, std::size_t position, std::size_t digits) {
  int number = -1;
  const char* const begin = text.data() + position;
  const auto [end, error] = std::from_chars(begin, begin + digits, number);
  return error == std::errc() && end == begin + digits ? number : -1;
}

}  // namespace

std::string HttpDate(sys_seconds time) {
  const sys_days day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  std::array<char, 64> text = {};
  const int size = std::snprintf(
      text.data(), text.size(), "%s, %02u %s %04d %02d:%02d:%02d GMT",
      kDays.at(weekday(day).c_encoding()), static_cast<unsigned>(date.day()),
      kMonths.at(static_cast<unsigned>(date.month()) - 1), static_cast<int>(date.year()),
      static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
      static_cast<int>(clock.seconds().count()));
  return {text.data(), static_cast<std::size_t>(size)};
}

std::optional<sys_seconds> ParseHttpDate(std::string_view text) {
  constexpr std::string_view kForm = "Sun, 06 Nov 1994 08:49:37 GMT";
  if (text.size() != kForm.size() || !text.ends_with(" GMT") || text[3] != ',') return std::nullopt;
  const auto* const month = std::find(kMonths.begin(), kMonths.end(), text.substr(8, 3));
  const int dayOfMonth = NumberAt(text, 5, 2);
  const int yearNumber = NumberAt(text, 12, 4);
  const int hour = NumberAt(text, 17, 2);
  const int minute = NumberAt(text, 20, 2);
  const int second = NumberAt(text, 23, 2);
  if (month == kMonths.end() || dayOfMonth < 0 || yearNumber < 0) return std::nullopt;
  if (hour < 0 || minute < 0 || second < 0) return std::nullopt;
  const year_month_day date(year(yearNumber),
                            std::chrono::month(static_cast<unsigned>(month - kMonths.begin()) + 1),
                            day(static_cast<unsigned>(dayOfMonth)));
  if (!date.ok()) return std::nullopt;
  return sys_days(date) + hours(hour) + minutes(minute) + seconds(second);
}

}  // namespace ModWeb
