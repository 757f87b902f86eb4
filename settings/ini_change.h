#pragma once

// Values of one INI file that are written together: the file is read once, and replaced as a whole
// once, so that at any moment, a crash included, either all of them are there or none.

#include <string>
#include <string_view>
#include <system_error>

#include "settings/ini_text.h"

namespace settings {

class IniChange {
 public:
  /// Reads `file`, a path text; one that is missing begins empty.
  explicit IniChange(std::string_view file);

  /// Whether there was no such file.
  bool IsNew() const { return isNew_; }

  /// Why the file, though it is there, could not be read; then it is never written.
  const std::error_code& Fault() const { return fault_; }

  /// As it will be written.
  const std::string& Bytes() const { return text_.Bytes(); }

  void Set(std::string_view section, std::string_view key, std::string_view value) {
    text_.Set(section, key, value);
  }

  std::error_code Save() const;

 private:
  std::string file_;
  IniText text_{""};
  std::error_code fault_;
  bool isNew_ = false;
};

}  // namespace settings
