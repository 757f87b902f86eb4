#pragma once

// What the end of the program finds yet to be unpacked, kept for the next start: the file
// unpack.lst of the program directory. UTF-8 whatever the code page is; a line per message, in
// their order:
//   number, tabulator, user, tabulator, mail root, CR LF

#include <deque>
#include <vector>

#include "mail/received_message.h"
#include "settings/program.h"

namespace ModMail {

/// Puts a new file in the place of an old one. What goes wrong is logged, and then it is false.
bool SaveUnpackList(const settings::Program& program, const std::deque<ReceivedMessage>& messages);

/// What is in the file, which is removed. Lines that say nothing are passed over; of them, and of a
/// file that cannot be read or is larger than any list, one line of the error log tells.
std::vector<ReceivedMessage> TakeUnpackList(const settings::Program& program);

}  // namespace ModMail
