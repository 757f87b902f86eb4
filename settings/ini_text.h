#pragma once

// An INI file's text, read and changed without touching anything else in it: order, comments,
// unknown lines and line ends stay. Sections and keys are compared without regard to case; of one
// that occurs twice the first counts. Docs: docs/architecture.md, "File formats".

#include <optional>
#include <string>
#include <string_view>

#include "platform/code_page.h"

namespace settings {

class IniText {
 public:
  /// `fileBytes`: the file as it is on the disk; empty for a new one.
  explicit IniText(std::string fileBytes);

  /// The text behind "=", leading blanks kept. None if there is no such section or key.
  std::optional<std::string> Find(std::string_view section, std::string_view key) const;

  /// Sets a value; section and key are added where they are missing. A line break in `value` would
  /// begin another line, and becomes a blank; with a NUL the value ends. The character set of the
  /// file stays, unless it cannot hold the value: then the whole file becomes UTF-8.
  void Set(std::string_view section, std::string_view key, std::string_view value);

  const std::string& Bytes() const { return bytes_; }

 private:
  // Where something stands in bytes_.
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
  bool Holds(std::string_view text) const;
  void BecomeUtf8();
  std::string_view LineBreak() const;
  std::string Decoded(std::string_view part) const;
  void Insert(std::size_t position, std::string_view line);
  std::string MissingLineEnd(std::size_t position, const std::string& lineBreak) const;

  std::string bytes_;
  platform::Charset charset_;
};

}  // namespace settings
