#pragma once

// How the Web server answers, as far as the user wants something else than the bare content of a
// file at a steady pace. The keys are optional ones of the server's section of Server.ini; without
// them nothing is different.

#include <cstdint>
#include <optional>

#include "settings/program.h"

namespace settings {
class Change;
class Section;
}  // namespace settings

namespace ModWeb {

/// In MiB.
inline constexpr std::int16_t kLargestBodyLimit = 64;

struct AnswerOptions {
  /// HTTP/1.1 with status line and header. Key `Answers`: "HTTP"; anything else means bare content.
  bool http = false;

  /// What each client gets of a file, at most, in KiB a second; 0: as much as the network takes.
  /// Without it, files go out in the pieces and pauses of ResponseSender. Key `Speed`.
  std::optional<std::int16_t> speed = {};

  /// The longest body of a request that HTTP answers, in MiB, from 1 to kLargestBodyLimit. Key
  /// `BodyLimit`.
  std::int16_t bodyLimit = 1;

  bool operator==(const AnswerOptions&) const = default;
};

/// A number that is none, or out of range, is logged and counts as absent.
AnswerOptions LoadAnswerOptions(const settings::Program& program, const settings::Section& section);

/// Adds to `change` what Server.ini does not say yet; false if it says it all.
bool WriteAnswerOptions(settings::Change& change, const settings::Program& program,
                        const AnswerOptions& options);

}  // namespace ModWeb
