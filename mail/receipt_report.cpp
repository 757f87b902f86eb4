#include "mail/receipt_report.h"

#include "mail/shown_subject.h"

namespace ModMail {
namespace {

using net::ActivityEnd;
using Kind = net::Activity::Kind;

bool HasWholeHeader(std::string_view beginning) {
  return beginning.size() >= kSubjectSearch ||
         beginning.find("\r\n\r\n") != std::string_view::npos ||
         beginning.find("\n\n") != std::string_view::npos;
}

bool IsAt(const net::Connection& client) {
  return client.IsUnfinished() && client.CurrentActivity().kind == Kind::kReceiveMail;
}

}  // namespace

void ReceiptReport::Note(net::Connection& client, const SmtpOutcome::Chunk& chunk) {
  if (!client.IsObserved()) return;
  if (chunk.isFirst) {
    beginning_.clear();
    subject_.clear();
    awaitsSubject_ = true;
    isLost_ = false;
  }
  isLost_ = isLost_ || !chunk.isStored;
  if (chunk.isFirst || !IsAt(client)) client.Begin(NewActivity());
  ReadSubject(client, chunk.isLast);
  if (chunk.isLast) client.Finish(isLost_ ? ActivityEnd::kFailed : ActivityEnd::kComplete);
}

bool ReceiptReport::IsReceiving(const net::Connection& client) const {
  return store_.State().transferStage == TransferStage::kReceiving && IsAt(client);
}

// The chunk itself was counted for what the client did before.
net::Activity ReceiptReport::NewActivity() const {
  const MailSessionState& state = store_.State();
  net::Activity activity = {.kind = Kind::kReceiveMail};
  for (const std::string& recipient : state.MailRecipients) {
    if (recipient.empty()) break;
    activity.what += (activity.what.empty() ? "" : "、") + recipient;
  }
  activity.path = PathOf({state.messageCount + 1, state.MailRecipients.front(), options_.mailRoot});
  activity.traffic.received = state.lastChunk.size();
  return activity;
}

// Without its first chunk, nothing is known of a message.
void ReceiptReport::ReadSubject(net::Connection& client, bool isLast) {
  if (awaitsSubject_) {
    const std::string_view chunk = store_.State().lastChunk;
    beginning_ += chunk.substr(0, kSubjectSearch - beginning_.size());
    if (isLast || HasWholeHeader(beginning_)) {
      subject_ = ShownSubject(beginning_);
      beginning_ = {};
      awaitsSubject_ = false;
    }
  }
  client.Describe(subject_);
}

}  // namespace ModMail
