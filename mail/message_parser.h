#pragma once

// Unpacks a received message into files for its reader to open: beside the message file
// Message_<n>.eml the folder Message_<n> with Content.txt, the decoded body, and the attachments,
// which are copied into the folder Accessary of the mail root as well; and a trace of the message
// in the file email.msg of the `User` folder. The message file stays as it is.
//
// No step's failure stops the next one or is reported: what can be unpacked is. It takes turns with
// other events, and needs about as much memory as the message is long.

#include <string>
#include <string_view>

#include "core/task.h"
#include "mail/message_structure.h"

namespace ModMail {

class MessageParser {
 public:
  /// Path texts; the message's ends in ".eml".
  MessageParser(std::string messagePath, std::string mailRoot);

  /// Does nothing if there is no such message. The parser must live until it has ended.
  core::Task<> Unpack();

 private:
  core::Task<bool> ReadText();
  core::Task<MessageStructure> FindPieces();
  core::Task<> WriteBody(std::string_view encoding, std::string_view body);
  core::Task<> ExtractAttachment(Attachment attachment);
  core::Task<> Trace(std::string_view subject);

  std::string messagePath_;
  std::string folder_;
  std::string accessary_;
  std::string traceFile_;
  std::string text_;
};

}  // namespace ModMail
