#pragma once

// What a file is, for the header Content-Type. The ending of its name decides. A table of our own
// comes first, for what browsers interpret: they refuse a script of a wrong type, and the system's
// table, which comes second, is changed by any program that is installed.
//
// Of a text, the bytes tell the character set, unless the text declares it itself.

#include <cstddef>
#include <string>
#include <string_view>

namespace ModWeb {

/// As much of the beginning of a file as helps.
inline constexpr std::size_t kTypeBeginning = std::size_t{16} << 10;

/// Whether the type of a file with that name depends on its beginning.
bool IsTextFile(std::string_view name);

/// For example "text/html; charset=utf-8"; "application/octet-stream" for what is not known. `name`
/// may be a whole path, with either separator. `beginning` matters if IsTextFile, and `isWhole`
/// tells whether it is all of the file.
std::string MediaTypeOf(std::string_view name, std::string_view beginning, bool isWhole);

}  // namespace ModWeb
