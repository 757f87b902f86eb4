#include "settings/ini_change.h"

#include <utility>

#include "files/files.h"
#include "settings/ini_file.h"

namespace settings {

IniChange::IniChange(std::string_view file) : file_(file) {
  auto text = ReadIniText(file_, fault_);
  isNew_ = !text && !fault_;
  if (text) text_ = std::move(*text);
}

std::error_code IniChange::Save() const {
  return fault_ ? fault_ : files::ReplaceContent(file_, text_.Bytes());
}

}  // namespace settings
