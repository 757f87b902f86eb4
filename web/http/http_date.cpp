#include "web/http/http_date.h"

#include <algorithm>
#include <array>
#include <string>

namespace ModWeb {
namespace {

using namespace std::chrono;

constexpr std::array<const char*, 7> kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<const char*, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// The forms that HTTP knows, behind the name of the day. "N" is the name of the month, other small
// letters are digits of a number each, and anything else stands for itself.
constexpr auto kForms = std::to_array<std::string_view>(
    {"dd NNN yyyy hh:mm:ss GMT", "dd-NNN-yy hh:mm:ss GMT", "NNN dd hh:mm:ss yyyy"});

struct Numbers {
  int day = 0, year = 0, hour = 0, minute = 0, second = 0;
  std::string month = {};

  int* Of(char letter) {
    switch (letter) {
      case 'd':
        return &day;
      case 'y':
        return &year;
      case 'h':
        return &hour;
      case 'm':
        return &minute;
      case 's':
        return &second;
      default:
        return nullptr;
    }
  }
};

std::optional<Numbers> Match(std::string_view form, std::string_view text) {
  if (text.size() != form.size()) return std::nullopt;
  Numbers numbers;
  for (std::size_t i = 0; i < form.size(); ++i) {
    const char c = text[i];
    if (int* const number = numbers.Of(form[i])) {
      const bool isPadding = c == ' ' && form[i] == 'd' && *number == 0;
      if (!isPadding && (c < '0' || c > '9')) return std::nullopt;
      *number = *number * 10 + (isPadding ? 0 : c - '0');
    } else if (form[i] == 'N') {
      numbers.month += c;
    } else if (c != form[i]) {
      return std::nullopt;
    }
  }
  const bool isShortYear = form.find("yyyy") == std::string_view::npos;
  if (isShortYear) numbers.year += numbers.year < 70 ? 2000 : 1900;
  return numbers;
}

std::optional<sys_seconds> TimeOf(const Numbers& numbers) {
  const auto* const month = std::find(kMonths.begin(), kMonths.end(), numbers.month);
  if (month == kMonths.end()) return std::nullopt;
  const year_month_day date(year(numbers.year),
                            std::chrono::month(static_cast<unsigned>(month - kMonths.begin()) + 1),
                            day(static_cast<unsigned>(numbers.day)));
  const bool isTime = numbers.hour < 24 && numbers.minute < 60 && numbers.second <= 60;
  if (!date.ok() || !isTime) return std::nullopt;
  return sys_days(date) + hours(numbers.hour) + minutes(numbers.minute) + seconds(numbers.second);
}

// At the end of `digits`, which are zeros so far.
template <class Number>
void Write(Number number, char* begin, std::size_t digits) {
  for (; digits > 0; number /= 10) begin[--digits] = static_cast<char>('0' + number % 10);
}

}  // namespace

std::string HttpDate(sys_seconds time) {
  const sys_days day = floor<days>(time);
  const year_month_day date(day);
  const hh_mm_ss clock(time - day);
  std::string text = "Day, 00 Mon 0000 00:00:00 GMT";
  text.replace(0, 3, kDays.at(weekday(day).c_encoding()));
  text.replace(8, 3, kMonths.at(static_cast<unsigned>(date.month()) - 1));
  Write(static_cast<unsigned>(date.day()), &text[5], 2);
  Write(static_cast<int>(date.year()), &text[12], 4);
  Write(clock.hours().count(), &text[17], 2);
  Write(clock.minutes().count(), &text[20], 2);
  Write(clock.seconds().count(), &text[23], 2);
  return text;
}

std::optional<sys_seconds> ParseHttpDate(std::string_view text) {
  const std::size_t blank = text.find(' ');
  if (blank == std::string_view::npos) return std::nullopt;
  for (const std::string_view form : kForms) {
    if (const auto numbers = Match(form, text.substr(blank + 1))) return TimeOf(*numbers);
  }
  return std::nullopt;
}

}  // namespace ModWeb
