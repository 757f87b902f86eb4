#pragma once

// What the POP3 server says, without line ends. Clients know these texts: a blank at the end is
// settled.

#include <string_view>

namespace ModMail::pop3 {

inline constexpr std::string_view kGreeting = "+OK  POP3 service ready ";
inline constexpr std::string_view kOk = "+OK";
inline constexpr std::string_view kOkBlank = "+OK ";  // a number follows, or a list
inline constexpr std::string_view kError = "-ERR";
inline constexpr std::string_view kNoAccount = "-ERR Account not exist";
inline constexpr std::string_view kCapabilities = "+OK Capability list follows";
inline constexpr std::string_view kEnd = ".";
inline constexpr std::string_view kUnreadable = "550";  // SMTP's code
inline constexpr std::string_view kNothing = "";        // a bare line end

}  // namespace ModMail::pop3
