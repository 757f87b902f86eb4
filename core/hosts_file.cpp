#include "core/hosts_file.h"

#include <sstream>

#include "core/os_name.h"
#include "core/service_environment.h"
#include "files/files.h"
#include "files/missing.h"
#include "platform/native_path.h"
#include "platform/system_message.h"
#include "platform/text_case.h"
#include "text/code_page.h"
#include "text/printable_text.h"
#include "text/utf8.h"

namespace core {
namespace {

constexpr std::size_t kLongestName = 64;  // bytes that are shown

bool IsNumeric(std::string_view address) {
  return address.find_first_not_of("0123456789.") == std::string_view::npos;
}

// The words may be anywhere in the line. Only "#" as the very first character disables it.
bool IsActiveEntry(std::string_view line, std::string_view upperAddress,
                   std::string_view upperDomain) {
  if (line.starts_with('#')) return false;
  // A fast path for nearly every line of a long file. Numbers have no case.
  if (IsNumeric(upperAddress) && line.find(upperAddress) == std::string_view::npos) return false;
  const std::string upper = platform::UpperCase(line);
  return upper.find(upperDomain) != std::string::npos &&
         upper.find(upperAddress) != std::string::npos;
}

bool HasEntry(std::string_view content, std::string_view address, std::string_view domain) {
  const std::string upperAddress = platform::UpperCase(address);
  const std::string upperDomain = platform::UpperCase(domain);
  content = text::WithoutByteOrderMark(content);
  while (!content.empty()) {
    const std::size_t end = content.find('\n');
    std::string_view line = content.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (IsActiveEntry(line, upperAddress, upperDomain)) return true;
    if (end == std::string_view::npos) break;
    content.remove_prefix(end + 1);
  }
  return false;
}

bool Update(std::string_view hostsFile, std::string_view address, std::string_view domain,
            std::error_code& unread) {
  const std::string content = files::ReadFile(hostsFile, unread, kLargestHostsFile);
  // An unreadable file may have the entry already.
  if (unread && !files::IsMissing(unread)) return false;
  const std::string domainBytes = text::ToSystem(domain);
  if (!unread && HasEntry(content, address, domainBytes)) return true;
  const std::string entry = "\r\n" + std::string(address) + "    " + domainBytes + "\r\n";
  return !files::AppendToFile(hostsFile, entry);
}

}  // namespace

platform::HostsPlace HostsPlaceOf(std::string_view osName) {
  const std::string name = platform::UpperCase(osName);
  const bool old = name == "WINDOWS 95" || name == "WINDOWS 98" || name == "WINDOWS MELLINNIUM";
  return old ? platform::HostsPlace::kWindowsDirectory : platform::HostsPlace::kSystemDirectory;
}

std::string HostsFile() {
  return platform::PathText(platform::HostsFile(HostsPlaceOf(GetOsName())));
}

bool UpdateHostsFile(std::string_view hostsFile, std::string_view address,
                     std::string_view domain) {
  std::error_code unread;
  return Update(hostsFile, address, domain, unread);
}

bool IsInHostsFile(std::string_view hostsFile, std::string_view address, std::string_view domain) {
  std::error_code error;
  const std::string content = files::ReadFile(hostsFile, error, kLargestHostsFile);
  return !error && HasEntry(content, address, text::ToSystem(domain));
}

std::map<std::string, std::string> HostNames(std::string_view hostsFile) {
  std::map<std::string, std::string> names;
  std::error_code error;
  std::istringstream lines(text::DecodeLines(files::ReadFile(hostsFile, error)));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line.substr(0, line.find('#')));
    std::string address;
    std::string name;
    if (words >> address >> name) names.emplace(address, text::Printable(name, kLongestName));
  }
  return names;
}

void EnterInHostsFile(const ServiceEnvironment& environment, std::string_view domain) {
  std::error_code unread;
  Update(environment.hostsFile, "127.0.0.1", domain, unread);
  if (!unread || files::IsMissing(unread)) return;
  environment.program.errors.LogError(environment.hostsFile + ": " +
                                      platform::SystemMessage(unread));
}

}  // namespace core
