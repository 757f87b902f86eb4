#pragma once

// The messages that a stop of the service leaves to be unpacked, stored for the next start in the
// file unpack.lst of the program directory. It is UTF-8 in every locale and has a line per message,
// in order:
//   number, tabulator, user, tabulator, mail root, CR LF

#include <deque>
#include <vector>

#include "mail/received_message.h"
#include "settings/program.h"

namespace ModMail {

/// Replaces the file. Whether it was written; a failure is logged.
bool SaveUnpackList(const settings::Program& program, const std::deque<ReceivedMessage>& messages);

/// Reads the file and removes it. Invalid lines are skipped; their number, or that the file cannot
/// be read or is too large, is logged in one line.
std::vector<ReceivedMessage> TakeUnpackList(const settings::Program& program);

}  // namespace ModMail
