#pragma once

// The registry as the program uses it (what it is on each system: settings/registry_key.h). Every
// failing call throws Modreg::Error with the system's message, which callers catch.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/registry_key.h"

namespace Modreg {

class Error : public std::system_error {
 public:
  explicit Error(const std::error_code& code);
  /// The system's message in UTF-8, nothing else.
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  std::string message_;
};

/// Opens a key, creating it if it is missing. A name with a NUL is an error, here and below.
Key CreateKey(Root root, std::string_view subkey);
Key OpenKey(Root root, std::string_view subkey);
void CloseKey(Key& key);

/// The text up to its first NUL. A missing value is an error.
std::string QueryText(const Key& key, std::string_view name);
void SetText(Key& key, std::string_view name, std::string_view value);
std::int32_t QueryNumber(const Key& key, std::string_view name);
void SetNumber(Key& key, std::string_view name, std::int32_t value);

/// The four roots by name, without regard to case, and back (empty for any other handle).
std::optional<Root> RootByName(std::string_view name);
std::string RootName(Root root);

/// The same for an existing key by its full path, "HKEY_CURRENT_USER\Software\...". A path that
/// does not begin with the name of a root is an error.
std::string ReadText(std::string_view path, std::string_view name);
void WriteText(std::string_view path, std::string_view name, std::string_view value);
std::int32_t ReadNumber(std::string_view path, std::string_view name);
void WriteNumber(std::string_view path, std::string_view name, std::int32_t value);

}  // namespace Modreg
