#include "web/http/html_text.h"

#include <algorithm>

#include "text/code_page.h"
#include "text/printable_text.h"

namespace ModWeb {
namespace {

std::string_view EscapeFor(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    case '\'':
      return "&#39;";
    default:
      return {};
  }
}

}  // namespace

std::string EscapeHtml(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char& c : text) {
    const std::string_view escape = EscapeFor(c);
    escaped += escape.empty() ? std::string_view(&c, 1) : escape;
  }
  return escaped;
}

std::string ShownName(std::string_view name) {
  const std::string text = text::IsValidUtf8(name) ? std::string(name) : text::FromGbk(name);
  return EscapeHtml(text::Printable(text));
}

std::string FillPage(std::string_view page,
                     std::initializer_list<std::pair<std::string_view, std::string>> values) {
  std::string filled;
  while (true) {
    const std::size_t begin = page.find("{{");
    const std::size_t end = page.find("}}", begin);
    filled += page.substr(0, begin);
    if (begin == std::string_view::npos || end == std::string_view::npos) return filled;
    const std::string_view name = page.substr(begin + 2, end - begin - 2);
    const auto value = std::find_if(values.begin(), values.end(),
                                    [&](const auto& known) { return known.first == name; });
    if (value != values.end()) filled += value->second;
    page.remove_prefix(end + 2);
  }
}

}  // namespace ModWeb
