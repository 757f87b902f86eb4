#pragma once

// The character set of a text, for the header Content-Type. What a text says of itself holds: a
// header would overrule it.

#include <string_view>

namespace ModWeb {

/// "utf-8" or "gbk" by the bytes of a text of the media type `type`. Empty if the text declares its
/// set or begins with a byte order mark, or if the bytes do not tell. Where `beginning` is not the
/// whole, its last character may be cut.
std::string_view CharsetFor(std::string_view type, std::string_view beginning, bool isWhole);

/// Whether the bytes can be those of a text at all.
bool IsPlainText(std::string_view beginning, bool isWhole);

}  // namespace ModWeb
