#include "web/resource_kind.h"

#include <algorithm>
#include <string>

#include "platform/text_case.h"

namespace ModWeb {
namespace {

std::string UpperCasedEnd(std::string_view resource, std::size_t length) {
  return platform::UpperCase(resource.substr(resource.size() - std::min(resource.size(), length)));
}

}  // namespace

bool IsHtmlPage(std::string_view resource) {
  const std::string end = UpperCasedEnd(resource, 5);
  return end == ".HTML" || end.ends_with(".HTM");
}

bool IsProgram(std::string_view resource) {
  const std::string end = UpperCasedEnd(resource, 4);
  return end == ".CGI" || end == ".EXE";
}

}  // namespace ModWeb
