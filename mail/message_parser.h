#pragma once

// Unpacks a received message into files for its reader to open: beside the message file
// Message_<n>.eml the folder Message_<n> with Content.txt, the decoded body, and the attachments,
// which are copied into the folder Accessary of the mail root as well; and a trace of the message
// in the file email.msg of the `User` folder. The message file stays as it is.
//
// No step's failure stops the next one or is reported: what can be unpacked is. Each file appears
// under its name when it is whole, and the trace is whole or not there: where the unpacking is
// interrupted, nothing half done stays, and it can be begun anew. It takes turns with other events,
// and needs the same little memory for a message of any size.

#include <string>
#include <string_view>

#include "mail/message_structure.h"
#include "net/task.h"
#include "platform/file.h"

namespace ModMail {

class WholeAppendix;

class MessageParser {
 public:
  /// Path texts; the message's ends in ".eml".
  MessageParser(std::string messagePath, std::string mailRoot);

  /// Does nothing if there is no such message. The parser must live until it has ended.
  net::Task<> Unpack();

 private:
  net::Task<bool> FindPieces();
  net::Task<> WriteBody();
  net::Task<> ExtractAttachment(Attachment attachment);
  net::Task<bool> Write(std::string path, std::string encoding, Stretch text);
  net::Task<> Trace();
  net::Task<> AppendText(WholeAppendix& trace, std::string_view clearSubject);
  net::Task<> AppendStretch(WholeAppendix& trace, Stretch stretch);

  std::string messagePath_;
  std::string folder_;
  std::string accessary_;
  std::string traceFile_;
  platform::File file_;
  std::uint64_t size_ = 0;
  MessageStructure structure_;
};

}  // namespace ModMail
