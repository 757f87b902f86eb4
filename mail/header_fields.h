#pragma once

// The fields of a message's or part's header, as mail programs read them (RFC 5322, 2045, 2231).
// Any bytes are accepted; a header ends at its first empty line.

#include <optional>
#include <string>
#include <string_view>

#include "text/date_time.h"

namespace ModMail {

/// The value of the first field of that name, its lines joined, without blanks in front. Empty if
/// there is none.
std::string HeaderField(std::string_view header, std::string_view name);

/// The parameter of a value such as `text/plain; charset="utf-8"`: unquoted, decoded if it is
/// encoded in one of the usual ways, its pieces joined. Empty if there is none.
std::string HeaderParameter(std::string_view value, std::string_view name);

/// `value` before its parameters, in lower case: "text/plain".
std::string HeaderWord(std::string_view value);

/// The time of a "Date" field; none if it is none.
std::optional<text::WallTime> MailDate(std::string_view value);

/// Whether `line` begins like a field of a header: a name and a colon.
bool LooksLikeField(std::string_view line);

}  // namespace ModMail
