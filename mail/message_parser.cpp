#include "mail/message_parser.h"

#include <array>
#include <utility>

#include "core/code_page.h"
#include "core/files.h"
#include "core/handler_scope.h"
#include "core/logs.h"
#include "core/paths.h"
#include "mail/ascii_case.h"
#include "mail/attachment_name.h"
#include "mail/base64.h"
#include "mail/encoded_subject.h"
#include "mail/mail_accounts.h"
#include "mail/quoted_printable.h"

namespace ModMail {
namespace {

using core::Task;
using platform::File;

// What is done between two looks at other events: well below a millisecond.
constexpr std::size_t kPieceBytes = 256 * 1024;

constexpr std::string_view kMessageExtension = ".eml";

bool IsQuotedPrintable(std::string_view encoding) {
  return EqualAscii(encoding, "quoted-printable");
}

// The bytes as they are, in pieces like those of the decoders.
class PlainBytes {
 public:
  explicit PlainBytes(std::string_view bytes) : rest_(bytes) {}
  bool IsDone() const { return rest_.empty(); }
  std::string_view Next(std::size_t count) {
    const std::string_view piece = rest_.substr(0, count);
    rest_.remove_prefix(piece.size());
    return piece;
  }

 private:
  std::string_view rest_;
};

// The file is there even if nothing comes out of the decoder.
template <class Decoder>
Task<> WriteDecoded(std::string path, Decoder decoder) {
  std::error_code error;
  File file = core::OpenFile(path, File::Mode::kReplace, error);
  while (file.IsOpen() && !error && !decoder.IsDone()) {
    file.Write(decoder.Next(kPieceBytes), error);
    co_await core::YieldToEvents();
  }
}

Task<> CopyInPieces(std::string from, std::string to) {
  std::error_code error;
  File source = core::OpenFile(from, File::Mode::kRead, error);
  if (!source.IsOpen()) co_return;
  File target = core::OpenFile(to, File::Mode::kReplace, error);
  std::string piece(kPieceBytes, '\0');
  while (target.IsOpen() && !error) {
    const std::size_t count = source.Read(piece.data(), piece.size(), error);
    if (count == 0 || error) co_return;
    target.Write(std::string_view(piece).substr(0, count), error);
    co_await core::YieldToEvents();
  }
}

Task<> AppendInPieces(std::string path, std::string_view bytes) {
  std::error_code error;
  File file = core::OpenFile(path, File::Mode::kAppend, error);
  PlainBytes pieces(bytes);
  while (file.IsOpen() && !error && !pieces.IsDone()) {
    file.Write(pieces.Next(kPieceBytes), error);
    co_await core::YieldToEvents();
  }
}

}  // namespace

MessageParser::MessageParser(std::string messagePath, std::string mailRoot)
    : messagePath_(std::move(messagePath)),
      folder_(messagePath_.substr(0, messagePath_.size() - kMessageExtension.size()) + "\\"),
      accessary_(ModCommon::AddSlash(mailRoot) + "Accessary\\"),
      traceFile_(MailUserFolder(mailRoot) + "email.msg") {}

Task<> MessageParser::Unpack() {
  Task<bool> reading = ReadText();
  if (!co_await reading) co_return;
  Task<MessageStructure> finding = FindPieces();
  const MessageStructure message = co_await finding;
  core::CreateFolder(folder_);
  core::CreateFolder(accessary_);
  Task<> writing = WriteBody(message.bodyEncoding, message.body);
  co_await writing;
  for (const Attachment& attachment : message.attachments) {
    Task<> extracting = ExtractAttachment(attachment);
    co_await extracting;
  }
  // Once for the text as bytes and once for the text as characters, which are the same here.
  for (int variant = 0; variant < 2; ++variant) {
    Task<> tracing = Trace(message.subject);
    co_await tracing;
  }
}

Task<bool> MessageParser::ReadText() {
  std::error_code error;
  File file = core::OpenIfExists(messagePath_);
  if (!file.IsOpen()) co_return false;
  text_.reserve(static_cast<std::size_t>(file.Size(error)));
  std::string piece(kPieceBytes, '\0');
  for (std::size_t count = piece.size(); count == piece.size() && !error;) {
    count = file.Read(piece.data(), piece.size(), error);
    text_.append(piece, 0, count);
    co_await core::YieldToEvents();
  }
  co_return !error;
}

Task<MessageStructure> MessageParser::FindPieces() {
  MessageScanner scanner(text_);
  while (scanner.Step(kPieceBytes)) co_await core::YieldToEvents();
  co_return scanner.Take();
}

// All that is not quoted-printable is taken for base64, plain text too.
Task<> MessageParser::WriteBody(std::string_view encoding, std::string_view body) {
  const std::string path = folder_ + "Content.txt";
  Task<> writing = IsQuotedPrintable(encoding)
                       ? WriteDecoded(path, modQPDedode::QuotedPrintableDecoder(body))
                       : WriteDecoded(path, Base64Decoder(body));
  co_await writing;
}

Task<> MessageParser::ExtractAttachment(Attachment attachment) {
  const std::string name = HarmlessFileName(AttachmentName(attachment.name));
  const std::string path = folder_ + name;
  const auto extract = [&]() -> Task<> {
    if (EqualAscii(attachment.encoding, "base64")) {
      return WriteDecoded(path, Base64Decoder(attachment.text));
    }
    if (IsQuotedPrintable(attachment.encoding)) {
      return WriteDecoded(path, modQPDedode::QuotedPrintableDecoder(attachment.text));
    }
    return WriteDecoded(path, PlainBytes(attachment.text));
  };
  Task<> extracting = extract();
  co_await extracting;
  Task<> copying = CopyInPieces(path, accessary_ + name);
  co_await copying;
}

// The whole message as it was read, with the subject in clear.
Task<> MessageParser::Trace(std::string_view subject) {
  const std::string_view text = text_;
  const auto begin = subject.empty() ? 0 : static_cast<std::size_t>(subject.data() - text.data());
  const std::string clear = IsEncodedSubject(subject)
                                ? core::ToSystem(DecodeEncodedSubject(subject))
                                : std::string(subject);
  const std::array<std::string_view, 3> pieces = {text.substr(0, begin), clear,
                                                  text.substr(begin + subject.size())};
  for (const std::string_view piece : pieces) {
    Task<> appending = AppendInPieces(traceFile_, piece);
    co_await appending;
  }
  ModCommon::AppendTrace("", traceFile_, true);
}

}  // namespace ModMail
