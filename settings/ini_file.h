#pragma once

// INI files on the disk. Every value is a text, addressed by the path of the file, section and key.
// Neither reading nor writing throws. To write several values together, use settings/ini_change.h.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "settings/ini_text.h"

namespace ModINIOP {

/// The value: at most 254 bytes in the system code page, up to its first NUL, without trailing
/// blanks. Empty if the file, the section or the key is missing; callers cannot tell these apart.
std::string ReadIni(std::string_view file, std::string_view section, std::string_view key);

/// settings::WriteValue by its older name. Non-zero on success.
std::int16_t WriteIni(std::string_view file, std::string_view section, std::string_view key,
                      std::string_view value);

}  // namespace ModINIOP

namespace settings {

/// Reads the file; none if it is missing. If it exists and cannot be read, `error` says why: such a
/// file must be taken neither for missing nor for empty.
std::optional<IniText> ReadIniText(std::string_view file, std::error_code& error);

/// Writes a value, creating file and section if needed. The file is replaced as a whole, so that a
/// crash leaves the old one or the new one.
std::error_code WriteValue(std::string_view file, std::string_view section, std::string_view key,
                           std::string_view value);

/// A value, shortened as by ReadIni.
std::string ValueIn(const IniText& text, std::string_view section, std::string_view key);

}  // namespace settings
