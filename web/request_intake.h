#pragma once

// Cutting a request out of what has arrived. One arrival is one request; the first characters
// decide the method, and the resource is cut by positions. Pure functions on texts.

#include <optional>
#include <string>
#include <string_view>

namespace ModWeb {

enum class RequestMethod { kGet, kPost, kOther };

/// "GET" is told by three characters, "POST" by four, in capitals.
RequestMethod MethodOf(std::string_view requestText);

/// The resource of a GET or POST request; none if there is nothing to cut, and the previous
/// request's resource stays in force.
std::optional<std::string> CutGetResource(std::string_view requestText);
std::optional<std::string> CutPostResource(std::string_view requestText);

}  // namespace ModWeb
