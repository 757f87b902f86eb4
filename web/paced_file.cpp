#include "web/paced_file.h"

#include <algorithm>

#include "net/handler_scope.h"

namespace ModWeb {

using net::Task;

Task<std::optional<std::string>> SendPaced(const platform::File& file, std::uint64_t offset,
                                           std::uint64_t size, Pacing pacing,
                                           std::shared_ptr<net::Connection> client) {
  const std::uint64_t end = offset + size;
  while (offset < end) {
    const std::uint64_t piece = std::min(end - offset, pacing.pieceBytes);
    Task<bool> sending = client->SendFile(file, offset, piece);
    const bool isSent = co_await sending;
    if (!isSent) co_return "the file has become shorter";
    offset += piece;
    if (offset == end || pacing.IsUnlimited()) continue;
    net::Pause pause(pacing.pause);
    co_await pause;
  }
  co_return std::nullopt;
}

}  // namespace ModWeb
