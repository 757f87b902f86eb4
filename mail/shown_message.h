#pragma once

// Reads a stored message for the window: its headers, its text and its attachments. The work goes
// in pieces, since a message may have any size; the file stays open, so that what is shown and
// saved is the same message even if it is collected meanwhile.
//
// Of alternatives that say the same the plain text is taken, of a message that has only HTML the
// text without tags. Everything is safe to show: printable, in lines of bounded length.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mail/mime_message.h"
#include "mail/part_decoder.h"
#include "platform/file.h"

namespace ModMail {

class ShownMessage {
 public:
  /// Decoded bytes; the rest of a longer text is not shown.
  static constexpr std::size_t kMostText = std::size_t{512} * 1024;

  /// `path`: the path text of the message file.
  explicit ShownMessage(std::string_view path);
  ShownMessage(const ShownMessage&) = delete;
  ShownMessage& operator=(const ShownMessage&) = delete;

  /// Whether the file can be read. It may have been collected.
  bool IsGood() const { return file_.IsOpen() && !error_; }

  /// Does the next piece of work, at most a few milliseconds. False once there is none.
  bool Step();

  /// The messages of the file, complete once IsScanned; usually one.
  bool IsScanned() const { return isScanned_; }
  std::size_t Count() const { return messages_.size(); }

  /// Takes up another of them, whose text is then to be read by further steps.
  void Choose(std::size_t index);

  const MimeMessage& Message() const { return messages_.at(chosen_); }

  /// Complete once Step returned false.
  const std::string& Text() const { return text_; }
  bool IsTextCut() const { return isTextCut_; }

  /// The parts to offer as files.
  std::vector<MimePart> Attachments() const;

  /// For PartReader; not while there are steps to do.
  platform::File& File() { return file_; }

 private:
  void Scan();
  void ReadText();
  void FinishText();

  platform::File file_;
  std::error_code error_;
  MimeScanner scanner_;
  StretchReader scanned_;
  bool isScanned_ = false;
  std::vector<MimeMessage> messages_;
  std::size_t chosen_ = 0;
  std::vector<MimePart> texts_;       // still to be read, the next one last
  std::optional<PartReader> reader_;  // of the one being read
  std::string bytes_;
  std::string text_;
  std::size_t read_ = 0;
  bool isTextCut_ = false;
};

/// `text` with printable characters alone, its lines divided where they are longer than a window
/// can lay out quickly.
std::string PrintableLines(std::string_view text);

/// The name of the file for an attachment: safe, with an extension by its type if it has no name.
std::string FileNameOf(const MimePart& attachment);

}  // namespace ModMail
