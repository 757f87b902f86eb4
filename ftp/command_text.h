#pragma once

// How a received text is taken apart. There are no lines: one arrival is one command, cut by
// position, whatever it holds. Positions count characters from 1; a byte that is part of no UTF-8
// character counts as one, so that names in another code page come through whole.

#include <optional>
#include <string>
#include <string_view>

namespace ModFtp {

/// No command with a path that a system knows is longer, in bytes. A longer one is refused as a
/// whole: cut, it would name something else.
inline constexpr std::size_t kLongestCommand = 16384;

/// Arguments begin behind a word of four letters, or of three, and its blank.
inline constexpr std::size_t kAfterFourLetters = 6;
inline constexpr std::size_t kAfterThreeLetters = 5;

std::size_t CharacterCount(std::string_view text);

/// The command word in upper case: what stands before the first CR LF in a text of fewer than seven
/// characters, before the first blank in a longer one. Empty if there is no such separator.
std::string CommandWord(std::string_view text);

/// The text from a position on; empty beyond the end.
std::string_view FromPosition(std::string_view text, std::size_t position);

/// `text` less its last two characters, which are taken to be the line end and are not looked at.
/// None if there are no two.
std::optional<std::string> WithoutLineEnd(std::string_view text);

/// FromPosition, then WithoutLineEnd.
std::optional<std::string> CutArgument(std::string_view text, std::size_t position);

/// The transfer type that TYPE's text asks for, as received; "A" for one that is not known.
std::string CutTransferType(std::string_view text);

/// The offset that REST's text names; none if it is too short to hold one.
std::optional<std::string> CutRestart(std::string_view text);

/// Whether SITE's text asks for help.
bool AsksForHelp(std::string_view text);

}  // namespace ModFtp
