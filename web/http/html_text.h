#pragma once

// Texts within HTML pages.

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

namespace ModWeb {

/// `text` as content of an element or of a quoted attribute.
std::string EscapeHtml(std::string_view text);

/// A file name as a visitor may see it: as one line of UTF-8 without hidden characters, escaped.
std::string ShownName(std::string_view name);

/// `page` with every "{{name}}" replaced by the value of that name, which is not searched again. A
/// name without a value is replaced by nothing.
std::string FillPage(std::string_view page,
                     std::initializer_list<std::pair<std::string_view, std::string>> values);

}  // namespace ModWeb
