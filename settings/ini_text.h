#pragma once

// The text of an INI file. Changing a value leaves everything else in it as it was: order,
// comments, unknown lines and line ends. Section and key names ignore case; of duplicates the first
// counts. Docs: docs/architecture.md, "File formats".

#include <optional>
#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace settings {

class IniText {
 public:
  /// `fileBytes`: the file as it is on the disk; empty for a new one.
  explicit IniText(std::string fileBytes);

  /// A file that is in `charset` whatever its bytes look like, and that gets `lineBreak`, a
  /// literal, if it has none yet.
  IniText(std::string fileBytes, platform::Charset charset, std::string_view lineBreak);

  bool HasSection(std::string_view section) const;

  /// The text behind "=", leading blanks kept. None if there is no such section or key.
  std::optional<std::string> Find(std::string_view section, std::string_view key) const;

  /// Adds an empty section if it is missing.
  void AddSection(std::string_view section);

  /// Sets a value, adding section and key if they are missing. CR and LF in `value` become blanks,
  /// and the value ends at a NUL. The file keeps its character set unless that cannot represent the
  /// value; then the whole file is converted to UTF-8.
  void Set(std::string_view section, std::string_view key, std::string_view value);

  const std::string& Bytes() const { return bytes_; }

 private:
  // Positions in bytes_.
  struct Place {
    bool sectionFound = false;
    bool keyFound = false;
    std::size_t valueBegin = 0;
    std::size_t valueEnd = 0;
    std::size_t insertAt = 0;  // behind the section's last line that is not blank
  };

  Place Locate(std::string_view section, std::string_view key) const;
  bool IsNamed(std::string_view written, std::string_view name) const;
  void Write(std::string_view section, std::string_view key, std::string_view value);
  void InsertSection(std::string_view section);
  bool Holds(std::string_view text) const;
  void BecomeUtf8();
  void EnsureDetected();
  std::string_view LineBreak() const;
  std::string Decoded(std::string_view part) const;
  void Insert(std::size_t position, std::string_view line);
  std::string MissingLineEnd(std::size_t position, const std::string& lineBreak) const;

  std::string bytes_;
  platform::Charset charset_;
  std::string_view firstLineBreak_ = "\r\n";
};

}  // namespace settings
