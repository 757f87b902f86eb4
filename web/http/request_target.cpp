#include "web/http/request_target.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "platform/ascii.h"
#include "platform/plain_name.h"
#include "text/code_page.h"
#include "text/strings.h"

namespace ModWeb {
namespace {

// Also a target with a scheme and a host, as for a proxy, is answered: whichever host it is.
std::optional<std::string_view> WithoutHost(std::string_view target) {
  if (target.starts_with('/')) return target;
  const std::size_t schemeEnd = target.find("://");
  if (schemeEnd == std::string_view::npos) return std::nullopt;
  const std::string_view scheme = target.substr(0, schemeEnd);
  if (!platform::EqualIgnoringAsciiCase(scheme, "http") &&
      !platform::EqualIgnoringAsciiCase(scheme, "https")) {
    return std::nullopt;
  }
  target.remove_prefix(schemeEnd + 3);
  const std::size_t path = std::min(target.find_first_of("/?"), target.size());
  const std::string_view host = target.substr(0, path);
  if (host.empty() || host.find_first_of("@\\#") != std::string_view::npos) return std::nullopt;
  return path == target.size() ? "/" : target.substr(path);
}

std::optional<std::string> Unescaped(std::string_view text) {
  std::string plain(text.substr(0, text.find('%')));
  for (std::size_t i = plain.size(); i < text.size(); ++i) {
    if (text[i] != '%') {
      plain += text[i];
      continue;
    }
    std::uint8_t code = 0;
    const char* const digits = text.data() + i + 1;
    if (i + 2 >= text.size()) return std::nullopt;
    const auto [end, error] = std::from_chars(digits, digits + 2, code, 16);
    if (error != std::errc() || end != digits + 2) return std::nullopt;
    if (text::IsControl(static_cast<char>(code))) return std::nullopt;
    plain += static_cast<char>(code);
    i += 2;
  }
  return plain;
}

bool IsSeparator(char c) { return c == '/' || c == '\\'; }
bool IsInName(char c) { return !IsSeparator(c); }
bool IsInPath(char c) { return c != '?' && c != '#'; }

std::optional<std::string> Resolved(std::string_view path) {
  std::vector<std::string_view> names;
  while (!path.empty()) {
    const std::string_view name = path.substr(0, text::PrefixLength(path, IsInName));
    path.remove_prefix(std::min(name.size() + 1, path.size()));
    if (name.empty() || name == ".") continue;
    if (name != "..") {
      if (!platform::IsPlainName(name)) return std::nullopt;
      names.push_back(name);
      continue;
    }
    if (names.empty()) return std::nullopt;
    names.pop_back();
  }
  std::string resolved;
  for (const std::string_view name : names) resolved.append("/").append(name);
  return resolved.empty() ? "/" : resolved;
}

}  // namespace

std::optional<RequestTarget> ParseTarget(std::string_view target) {
  if (std::any_of(target.begin(), target.end(), text::IsControl)) return std::nullopt;
  const auto local = WithoutHost(target);
  if (!local) return std::nullopt;
  target = *local;
  const std::size_t end = text::PrefixLength(target, IsInPath);
  const auto path = Unescaped(target.substr(0, end));
  if (!path || !(path->starts_with('/') || path->empty())) return std::nullopt;
  const auto resolved = Resolved(*path);
  if (!resolved) return std::nullopt;
  const std::size_t last = path->find_last_of("/\\");
  const std::string_view lastName = std::string_view(*path).substr(last + 1);
  const bool namesFolder = lastName.empty() || lastName == "." || lastName == "..";
  const std::string_view query = target.substr(end);
  return RequestTarget{.path = *resolved,
                       .namesFolder = namesFolder,
                       .query = std::string(query.substr(0, query.find('#')))};
}

std::vector<std::string> NamesOf(const std::string& path) {
  if (platform::IsAscii(path)) return {path};
  std::vector<std::string> names = {path};
  const std::string decoded = text::FromGbk(path);
  // "?" stands for what is no character.
  if (decoded.find('?') == std::string::npos) names.push_back(decoded);
  return names;
}

}  // namespace ModWeb
