#pragma once

#include <string>
#include <string_view>

namespace ModMail {

/// A reply of either protocol as it is sent, with its line end.
inline std::string ReplyLine(std::string_view text) { return std::string(text) + "\r\n"; }

}  // namespace ModMail
