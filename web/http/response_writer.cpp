#include "web/http/response_writer.h"

#include <utility>

#include "platform/system_message.h"

namespace ModWeb {
namespace {

using net::Task;
using platform::Departure;
using platform::File;
using Client = std::shared_ptr<net::Connection>;
using Failure = std::optional<std::string>;

// What goes along with the header in one send.
constexpr std::uint64_t kSmall = 10240;

Failure Append(File& file, const ByteRange& range, std::string& bytes) {
  const std::size_t before = bytes.size();
  const auto size = static_cast<std::size_t>(range.size);
  bytes.resize(before + size);
  std::error_code error;
  const std::size_t count = file.ReadAt(range.begin, bytes.data() + before, size, error);
  if (error) return platform::SystemMessage(error);
  if (count < size) return "the file has become shorter";
  return std::nullopt;
}

}  // namespace

Task<Failure> WriteResponse(HttpResponse response, WriteOptions options, Client client) {
  if (!HasBody(response.status)) response.body.clear();
  std::string bytes = HeadOf(response, options.keepsAlive);
  const Departure last = options.keepsAlive ? Departure::kAtOnce : Departure::kWithEnd;
  if (options.headOnly) response.body.clear();
  client->Expect(bytes.size() + response.Length());
  for (auto& [text, range] : response.body) {
    bytes += text;
    if (range.size == 0) continue;
    if (range.size <= kSmall) {
      if (Failure failure = Append(response.file, range, bytes)) co_return failure;
    } else {
      client->SendData(std::exchange(bytes, {}));
      Task<Failure> sending =
          SendPaced(response.file, range.begin, range.size, options.pacing, client);
      Failure failure = co_await sending;
      if (failure) co_return failure;
    }
  }
  if (!bytes.empty()) client->SendData(bytes, last);
  if (client->HasUnsentBytes()) {
    Task<> sent = client->Sent();
    co_await sent;
  }
  co_return std::nullopt;
}

}  // namespace ModWeb
