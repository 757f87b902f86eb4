#pragma once

// The target of a request, "/a%20b/c?q", as names of the site.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ModWeb {

struct RequestTarget {
  /// Begins with "/"; decoded, without "." and ".." and empty names, and without a "/" at the end
  /// but for "/" itself. Bytes as the client sent them, in whatever character set.
  std::string path;
  bool namesFolder = false;  // there was a "/" at the end
  std::string query;         // with its "?", as it was sent; empty if there is none
};

/// None if it is no target of a resource here: a malformed escape, a control character, a ".."
/// that would lead out of the site, or a name that the system takes for another. "\" divides names
/// like "/".
std::optional<RequestTarget> ParseTarget(std::string_view target);

/// The names that `path` may mean, in UTF-8, the likeliest first: as it is, and read as GB2312.
std::vector<std::string> NamesOf(const std::string& path);

}  // namespace ModWeb
