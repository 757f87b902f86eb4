#pragma once

// INI files on the disk: every value is a text, addressed by the file's whole path, section and
// key. Reading and writing never fail loudly. Several values that belong together are written by
// settings/ini_change.h.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/ini_text.h"

namespace ModINIOP {

/// The value, at most 254 bytes of it in the system code page, cut at its first NUL, its trailing
/// blanks removed. Empty if the file, the section or the key is missing: callers cannot tell.
std::string ReadIni(std::string_view file, std::string_view section, std::string_view key);

/// Writes a value, creating file and section; the file is replaced as a whole, so that a crash
/// leaves the old one or the new one. Non-zero on success.
std::int16_t WriteIni(std::string_view file, std::string_view section, std::string_view key,
                      std::string_view value);

}  // namespace ModINIOP

namespace settings {

/// The file as it is now; none if it is missing. Where it is there and cannot be read, `error` says
/// why: it is not to be taken for missing, or for empty.
std::optional<IniText> ReadIniText(std::string_view file, std::error_code& error);

/// A value by the rule of ReadIni.
std::string ValueIn(const IniText& text, std::string_view section, std::string_view key);

}  // namespace settings
