#include "core/hosts_file.h"

#include <string>

#include "core/code_page.h"
#include "core/files.h"
#include "platform/text_case.h"

namespace core {
namespace {

bool Holds(std::string_view upperLine, std::string_view text) {
  return upperLine.find(platform::UpperCase(text)) != std::string_view::npos;
}

// The words may stand anywhere in the line; only a "#" as its very first character disables it.
bool IsActiveEntry(std::string_view line, std::string_view address, std::string_view domain) {
  if (line.starts_with('#')) return false;
  const std::string upper = platform::UpperCase(line);
  return Holds(upper, domain) && Holds(upper, address);
}

bool HasEntry(std::string_view content, std::string_view address, std::string_view domain) {
  while (!content.empty()) {
    const std::size_t end = content.find('\n');
    std::string_view line = content.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (IsActiveEntry(line, address, domain)) return true;
    if (end == std::string_view::npos) break;
    content.remove_prefix(end + 1);
  }
  return false;
}

}  // namespace

bool AddHostsEntry(std::string_view hostsFile, std::string_view address, std::string_view domain) {
  const auto content = ReadFile(hostsFile);
  const std::string domainBytes = ToSystem(domain);
  if (content && HasEntry(*content, address, domainBytes)) return true;
  const std::string entry = "\r\n" + std::string(address) + "    " + domainBytes + "\r\n";
  return !AppendToFile(hostsFile, entry);
}

}  // namespace core
