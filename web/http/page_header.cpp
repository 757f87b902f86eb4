#include "web/http/page_header.h"

#include <algorithm>
#include <array>

#include "platform/text_case.h"
#include "text/conversions.h"
#include "text/strings.h"
#include "web/http/header_syntax.h"

namespace ModWeb {
namespace {

// These are the server's own to say.
constexpr std::array<std::string_view, 7> kServersOwn = {
    "CONNECTION", "CONTENT-LENGTH",   "DATE", "KEEP-ALIVE", "TRAILER",
    "UPGRADE",    "TRANSFER-ENCODING"};

struct Field {
  std::string_view name;
  std::string_view value;
};

std::optional<Field> ParseField(std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == 0 || colon == std::string_view::npos) return std::nullopt;
  const Field field = {line.substr(0, colon), text::TrimBlanks(line.substr(colon + 1))};
  const bool isField = std::all_of(field.name.begin(), field.name.end(), IsInToken) &&
                       std::none_of(field.value.begin(), field.value.end(), text::IsControl);
  return isField ? std::optional(field) : std::nullopt;
}

// "404 Not here"
bool TakeStatus(std::string_view value, PageHeader& header) {
  const auto number = text::ToInt16(value.substr(0, 3));
  if (!number || *number < 200 || *number > 599) return false;
  header.status = *number;
  header.reason = text::TrimBlanks(value.substr(3));
  return true;
}

void Keep(const Field& field, PageHeader& header) {
  header.fields.append(field.name).append(": ").append(field.value).append("\r\n");
}

}  // namespace

std::optional<PageHeader> ParsePageHeader(std::string_view beginning) {
  PageHeader header;
  bool hasStatus = false;
  bool hasPlace = false;
  std::string_view rest = beginning;
  while (true) {
    const std::size_t end = rest.find('\n');
    if (end == std::string_view::npos) return std::nullopt;
    std::string_view line = rest.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    rest.remove_prefix(end + 1);
    if (line.empty()) break;
    const auto field = ParseField(line);
    if (!field) return std::nullopt;
    const std::string name = platform::UpperCase(field->name);
    if (name == "STATUS") {
      if (!TakeStatus(field->value, header)) return std::nullopt;
      hasStatus = true;
      continue;
    }
    if (std::find(kServersOwn.begin(), kServersOwn.end(), name) != kServersOwn.end()) continue;
    header.hasType = header.hasType || name == "CONTENT-TYPE";
    hasPlace = hasPlace || name == "LOCATION";
    Keep(*field, header);
  }
  if (!header.hasType && !hasStatus && !hasPlace) return std::nullopt;
  if (hasPlace && !hasStatus) header.status = 302;
  header.size = beginning.size() - rest.size();
  return header;
}

}  // namespace ModWeb
