#include "text/path_text.h"

#include "text/strings.h"

namespace ModCommon {

std::string AddSlash(std::string_view path) {
  const std::string_view trimmed = text::TrimBlanks(path);
  if (trimmed.ends_with('\\') || trimmed.ends_with('/')) return std::string(path);
  return std::string(text::TrimTrailingBlanks(path)) + "\\";
}

}  // namespace ModCommon
