#pragma once

#include <string>
#include <string_view>

namespace ModMail {

/// The text of an HTML page, for messages that have no other: without tags, styles, scripts and
/// comments, with line ends where blocks and line breaks are. Nothing is rendered, nothing fetched.
/// Any bytes are accepted; the time is linear.
std::string TextOfHtml(std::string_view html);

}  // namespace ModMail
