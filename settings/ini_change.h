#pragma once

// Several values of one INI file, written together. The file is read once and replaced once, so
// that even after a crash either all of the new values are there or none.

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/ini_text.h"

namespace settings {

class IniChange {
 public:
  /// Reads `file`, a path text. A missing file counts as empty.
  explicit IniChange(std::string_view file);

  /// Whether the file was missing.
  bool IsNew() const { return isNew_; }

  /// Why the existing file could not be read. If set, Save fails with it and writes nothing.
  const std::error_code& Fault() const { return fault_; }

  /// The content that Save will write.
  const std::string& Bytes() const { return text_.Bytes(); }

  std::optional<std::string> Find(std::string_view section, std::string_view key) const {
    return text_.Find(section, key);
  }

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
