#pragma once

#include <string>
#include <utility>

#include "platform/code_page.h"

namespace platform {

/// A name as the file system has it.
inline std::string NameBytes(std::string text) {
  const Charset charset = SystemCharset();
  return charset == Charset::kUtf8 ? std::move(text) : FromUtf8(charset, text);
}

}  // namespace platform
