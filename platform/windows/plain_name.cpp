#include "platform/plain_name.h"

namespace platform {

bool IsPlainName(std::string_view name) {
  return name.find(':') == std::string_view::npos && !name.ends_with('.') && !name.ends_with(' ');
}

}  // namespace platform
