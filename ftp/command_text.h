#pragma once

// Cuts a received command into its word and its argument. There is no line buffering: one arrival
// is one command, whatever it holds. Arguments are cut by position. Positions count characters from
// 1; a byte that is not part of a UTF-8 character counts as one, which keeps names in other code
// pages intact. All of it takes linear time.

#include <optional>
#include <string>
#include <string_view>

namespace ModFtp {

/// In bytes. No path that a system accepts needs more. A longer command is refused as a whole:
/// truncated, it would name something else.
inline constexpr std::size_t kLongestCommand = 16384;

/// Where arguments begin: after a word of four or three letters and its blank.
inline constexpr std::size_t kAfterFourLetters = 6;
inline constexpr std::size_t kAfterThreeLetters = 5;

std::size_t CharacterCount(std::string_view text);

/// The command word in upper case: the text before the first CR LF if there are fewer than seven
/// characters in all, otherwise before the first blank. Empty without that separator.
std::string CommandWord(std::string_view text);

/// The text from `position` on; empty beyond the end.
std::string_view FromPosition(std::string_view text, std::size_t position);

/// `text` less its last two characters, which are assumed to be the line end, unchecked. None if it
/// has fewer than two.
std::optional<std::string> WithoutLineEnd(std::string_view text);

/// FromPosition, then WithoutLineEnd.
std::optional<std::string> CutArgument(std::string_view text, std::size_t position);

/// The transfer type in TYPE's text, in the case received; "A" for an unknown one.
std::string CutTransferType(std::string_view text);

/// The offset in REST's text; none if the text is too short for one.
std::optional<std::string> CutRestart(std::string_view text);

/// Whether SITE's text asks for help.
bool AsksForHelp(std::string_view text);

}  // namespace ModFtp
