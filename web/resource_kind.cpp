#include "web/resource_kind.h"

#include "platform/ascii.h"

namespace ModWeb {
namespace {

bool EndsWith(std::string_view resource, std::string_view end) {
  if (resource.size() < end.size()) return false;
  return platform::EqualIgnoringAsciiCase(resource.substr(resource.size() - end.size()), end);
}

}  // namespace

bool IsHtmlPage(std::string_view resource) {
  return EndsWith(resource, ".htm") || EndsWith(resource, ".html");
}

bool IsProgram(std::string_view resource) {
  return EndsWith(resource, ".cgi") || EndsWith(resource, ".exe");
}

}  // namespace ModWeb
