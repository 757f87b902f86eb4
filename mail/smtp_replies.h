#pragma once

// Every fixed text that the SMTP server sends, without its line end. Clients match them literally,
// so neither a missing blank nor an extra one must be corrected.

#include <string_view>

namespace ModMail::smtp {

inline constexpr std::string_view kGreeting = "220  SMTP server ready ";
inline constexpr std::string_view kOk = "250 OK";
inline constexpr std::string_view kNoAccount = "550 Account not exist";
inline constexpr std::string_view kEnterMail = "354 Enter mail,end with.";
inline constexpr std::string_view kSaved = "250 OK,message saved";
inline constexpr std::string_view kCannotVerify = "252";
inline constexpr std::string_view kHelp = "214";
inline constexpr std::string_view kGoodbye = "221";
inline constexpr std::string_view kNothing = "";  // a bare line end

// Only where what is acknowledged is kept.
inline constexpr std::string_view kMailboxFull = "452 Mailbox full";
inline constexpr std::string_view kNotStored = "452 Message not stored";
inline constexpr std::string_view kTooLarge = "552 Message too large";
inline constexpr std::string_view kTooManyRecipients = "550 Too many recipients";
inline constexpr std::string_view kNoRecipients = "554 No recipients";

}  // namespace ModMail::smtp
