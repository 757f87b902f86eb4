#pragma once

#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace platform {

/// A name as the file system has it.
inline std::string NameBytes(std::string_view text) {
  const Charset charset = SystemCharset();
  return charset == Charset::kUtf8 ? std::string(text) : FromUtf8(charset, text);
}

}  // namespace platform
