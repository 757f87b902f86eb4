#pragma once

// Writes a path for a link, a redirect or any other place that takes a URL.

#include <string>
#include <string_view>

namespace ModWeb {

/// `path` with everything percent-encoded but "/" and the characters that stand for themselves
/// anywhere in a URL (letters, digits, "-", ".", "_" and "~"). Works on bytes, so a name that is
/// not UTF-8 survives. The result is safe within an HTML attribute and within a header line.
std::string EncodeUrlPath(std::string_view path);

}  // namespace ModWeb
