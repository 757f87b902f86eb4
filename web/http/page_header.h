#pragma once

// The header that a program may put in front of its page: lines of fields and an empty line.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ModWeb {

struct PageHeader {
  std::size_t size = 0;  // of the header, in bytes of the page
  int status = 200;
  std::string reason = {};
  std::string fields = {};  // lines as for HttpResponse; without those that the server sets itself
  bool hasType = false;
};

/// None if the page does not begin with a header: it has one if it names its type, its status or
/// another place. `beginning`: the first 8 KiB.
std::optional<PageHeader> ParsePageHeader(std::string_view beginning);

}  // namespace ModWeb
