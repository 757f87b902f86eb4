#pragma once

// The subject of a message as the user reads it in lists. Unpacking has rules of its own
// (mail/encoded_subject.h), on which files depend.

#include <cstddef>
#include <string>
#include <string_view>

namespace ModMail {

/// As much of a message as is searched for its subject.
inline constexpr std::size_t kSubjectSearch = 8192;

/// The subject in the header that `beginning` begins with, decoded (mail/decoded_header.h). Empty
/// if there is none. Not yet safe to show.
std::string ShownSubject(std::string_view beginning);

}  // namespace ModMail
