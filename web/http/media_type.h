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

/// For example "text/html"; "application/octet-stream" for an ending that is not known, and empty
/// for a name without one. `name` may be a whole path, with either separator.
std::string TypeByName(std::string_view name);

/// Whether the bytes of a file say more than such a type by its name.
bool DependsOnBytes(std::string_view type);

/// The whole type, for example "text/html; charset=utf-8", of a file with that type by its name.
/// `beginning` matters if DependsOnBytes, and `isWhole` tells whether it is all of the file.
std::string MediaTypeOf(std::string type, std::string_view beginning, bool isWhole);

}  // namespace ModWeb
