#pragma once

// Unpacks a received message into files that its reader can open. Beside the message file
// Message_<n>.eml it makes the folder Message_<n> with the decoded body, Content.txt, and the
// attachments, which it also copies into the folder Accessary of the mail root. It appends a trace
// of the message to the file email.msg of the `User` folder. The message file is not changed.
//
// A step that fails is skipped and not reported. Files appear under their names once they are
// whole, and the trace is added as a whole: an interruption leaves nothing half done, and unpacking
// can be started again. It yields to other events, and its memory does not grow with the message.

#include <string>
#include <string_view>

#include "mail/message_structure.h"
#include "net/side_thread.h"
#include "net/task.h"
#include "platform/file.h"

namespace ModMail {

class WholeAppendix;

class MessageParser {
 public:
  /// Both are path texts; `messagePath` ends in ".eml". Large files are flushed on `flushing`,
  /// which must outlive the parser.
  MessageParser(std::string messagePath, const std::string& mailRoot, net::SideThread& flushing);

  /// Does nothing if there is no such message. The parser must outlive the task.
  net::Task<> Unpack();

 private:
  net::Task<bool> FindPieces();
  net::Task<> WriteBody();
  net::Task<> ExtractAttachment(Attachment attachment);
  net::Task<bool> Write(std::string path, std::string encoding, Stretch text);
  net::Task<> Trace();
  net::Task<> AppendText(WholeAppendix& trace, std::string_view clearSubject);
  net::Task<> AppendStretch(WholeAppendix& trace, Stretch stretch);

  net::SideThread& flushing_;
  std::string messagePath_;
  std::string folder_;
  std::string accessary_;
  std::string traceFile_;
  platform::File file_;
  std::uint64_t size_ = 0;
  MessageStructure structure_;
};

}  // namespace ModMail
