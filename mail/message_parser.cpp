#include "mail/message_parser.h"

#include <memory>
#include <system_error>
#include <utility>

#include "files/files.h"
#include "files/logs.h"
#include "mail/ascii_case.h"
#include "mail/attachment_name.h"
#include "mail/base64.h"
#include "mail/encoded_subject.h"
#include "mail/mail_accounts.h"
#include "mail/quoted_printable.h"
#include "mail/whole_file.h"
#include "net/handler_scope.h"
#include "text/code_page.h"
#include "text/path_text.h"

namespace ModMail {
namespace {

using net::Task;
using platform::File;

constexpr std::string_view kMessageExtension = ".eml";

bool IsQuotedPrintable(std::string_view encoding) {
  return EqualAscii(encoding, "quoted-printable");
}

// Passes the bytes on as they are, with the decoders' interface.
class PlainBytes {
 public:
  std::string_view Next(std::string_view piece) const { return piece; }
  std::string_view End() const { return {}; }
};

// Without a thread, the file is not flushed.
Task<> FlushBeside(WholeFile& file, net::SideThread& thread) {
  const auto flush = std::make_shared<files::PendingFlush>(file.OpenFlush());
  try {
    Task<> flushing = thread.Run([flush] { flush->Flush(); });
    co_await flushing;
  } catch (const std::system_error&) {
  }
}

// Makes the file even if the decoder yields nothing. Whether it was made.
template <class Decoder>
Task<bool> WriteDecoded(std::string path, StretchReader text, Decoder decoder,
                        net::SideThread& thread) {
  WholeFile file(path);
  std::error_code error;
  for (std::string_view piece = text.Next(error); file.IsGood() && !piece.empty();
       piece = text.Next(error)) {
    file.Write(decoder.Next(piece));
    co_await net::YieldToEvents();
    if (!file.HasMuchToFlush()) continue;
    Task<> flushing = FlushBeside(file, thread);
    co_await flushing;
  }
  file.Write(decoder.End());
  co_return !error && file.PutInPlace();
}

// Whether the whole file was copied.
Task<bool> Copy(std::string from, std::string to, net::SideThread& thread) {
  std::error_code error;
  File source = files::OpenFile(from, File::Mode::kRead, error);
  if (!source.IsOpen()) co_return false;
  Task<bool> writing = WriteDecoded(
      std::move(to), StretchReader(source, {0, source.SizeWhenOpened()}), PlainBytes(), thread);
  const bool written = co_await writing;
  co_return written;
}

}  // namespace

MessageParser::MessageParser(std::string messagePath, const std::string& mailRoot,
                             net::SideThread& flushing)
    : flushing_(flushing),
      messagePath_(std::move(messagePath)),
      folder_(messagePath_.substr(0, messagePath_.size() - kMessageExtension.size()) + "\\"),
      accessary_(ModCommon::AddSlash(mailRoot) + "Accessary\\"),
      traceFile_(MailUserFolder(mailRoot) + "email.msg") {}

Task<> MessageParser::Unpack() {
  file_ = files::OpenIfExists(messagePath_);
  if (!file_.IsOpen()) co_return;
  size_ = file_.SizeWhenOpened();
  Task<bool> finding = FindPieces();
  const bool found = co_await finding;
  if (!found) co_return;
  files::CreateFolder(folder_);
  files::CreateFolder(accessary_);
  Task<> writing = WriteBody();
  co_await writing;
  for (const Attachment& attachment : structure_.attachments) {
    Task<> extracting = ExtractAttachment(attachment);
    co_await extracting;
  }
  Task<> tracing = Trace();
  co_await tracing;
}

Task<bool> MessageParser::FindPieces() {
  MessageScanner scanner;
  StretchReader text(file_, {0, size_});
  std::error_code error;
  for (std::string_view piece = text.Next(error); !piece.empty(); piece = text.Next(error)) {
    scanner.Take(piece);
    co_await net::YieldToEvents();
  }
  structure_ = scanner.End();
  co_return !error;
}

// Whatever is not quoted-printable is decoded as base64, plain text too.
Task<> MessageParser::WriteBody() {
  const bool isQuoted = IsQuotedPrintable(structure_.bodyEncoding);
  Task<bool> writing = Write(folder_ + "Content.txt", isQuoted ? structure_.bodyEncoding : "base64",
                             structure_.body);
  co_await writing;
}

Task<bool> MessageParser::Write(std::string path, std::string encoding, Stretch text) {
  StretchReader reader(file_, text);
  if (EqualAscii(encoding, "base64")) {
    return WriteDecoded(std::move(path), std::move(reader), Base64Decoder(), flushing_);
  }
  if (IsQuotedPrintable(encoding)) {
    return WriteDecoded(std::move(path), std::move(reader), modQPDedode::QuotedPrintableDecoder(),
                        flushing_);
  }
  return WriteDecoded(std::move(path), std::move(reader), PlainBytes(), flushing_);
}

Task<> MessageParser::ExtractAttachment(Attachment attachment) {
  const std::string name = HarmlessFileName(AttachmentName(attachment.name));
  Task<bool> extracting = Write(folder_ + name, attachment.encoding, attachment.text);
  const bool extracted = co_await extracting;
  if (!extracted) co_return;
  Task<bool> copying = Copy(folder_ + name, accessary_ + name, flushing_);
  co_await copying;
}

// Appends the whole message with its subject decoded, twice: readers of the trace expect a variant
// as bytes and one as characters, which are the same here.
Task<> MessageParser::Trace() {
  const std::string& subject = structure_.subject;
  const std::string clear =
      IsEncodedSubject(subject) ? text::ToSystem(DecodeEncodedSubject(subject)) : subject;
  WholeAppendix trace(traceFile_);
  for (int variant = 0; variant < 2 && trace.IsGood(); ++variant) {
    Task<> appending = AppendText(trace, clear);
    co_await appending;
    ModCommon::AppendTrace("", traceFile_, true);
  }
  trace.Keep();
}

Task<> MessageParser::AppendText(WholeAppendix& trace, std::string_view clearSubject) {
  Task<> beginning = AppendStretch(trace, {0, structure_.subjectPlace.begin});
  co_await beginning;
  trace.Write(clearSubject);
  Task<> rest = AppendStretch(trace, {structure_.subjectPlace.end, size_});
  co_await rest;
}

Task<> MessageParser::AppendStretch(WholeAppendix& trace, Stretch stretch) {
  StretchReader text(file_, stretch);
  std::error_code error;
  for (std::string_view piece = text.Next(error); trace.IsGood() && !piece.empty();
       piece = text.Next(error)) {
    trace.Write(piece);
    co_await net::YieldToEvents();
  }
  if (error) trace.Fail(error);
}

}  // namespace ModMail
