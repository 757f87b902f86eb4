#pragma once

// Every fixed text that the POP3 server sends, without its line end. Clients match them literally,
// so the blank at the end of some must not be removed.

#include <string_view>

namespace ModMail::pop3 {

inline constexpr std::string_view kGreeting = "+OK  POP3 service ready ";
inline constexpr std::string_view kOk = "+OK";
inline constexpr std::string_view kOkBlank = "+OK ";  // + a number, or lines up to kEnd
inline constexpr std::string_view kError = "-ERR";
inline constexpr std::string_view kNoAccount = "-ERR Account not exist";
inline constexpr std::string_view kCapabilities = "+OK Capability list follows\r\n.";
inline constexpr std::string_view kEnd = ".";
inline constexpr std::string_view kUnreadable = "550";  // a code of SMTP
inline constexpr std::string_view kNothing = "";        // a bare line end

// Where messages end once.
inline constexpr std::string_view kNoMessage = "-ERR No such message";

// Where clients have to sign in. Some programs ask whether they can.
inline constexpr std::string_view kNotSignedIn = "-ERR Sign in first";
inline constexpr std::string_view kWrongPassword = "-ERR Wrong name or password";
inline constexpr std::string_view kBusy = "-ERR Too many sign in, try again later";
inline constexpr std::string_view kSignInCapabilities = "+OK Capability list follows\r\nUSER\r\n.";

}  // namespace ModMail::pop3
