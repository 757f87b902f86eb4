#pragma once

// The text of a header's value as the user reads it: encoded words ("=?utf-8?B?5L2g?=", RFC 2047)
// in every character set that the system can convert (platform/known_charsets.h). Unpacking has
// rules of its own (mail/encoded_subject.h), on which files depend.

#include <string>
#include <string_view>

namespace ModMail {

/// `value` unfolded, with its encoded words decoded. Bytes outside of them are read in the set that
/// they look like. The time is linear. Not yet safe to show.
std::string DecodedHeader(std::string_view value);

}  // namespace ModMail
