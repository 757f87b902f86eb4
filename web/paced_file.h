#pragma once

// Sends a file at the pace that the user wants: in pieces, with a pause behind each.

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "net/connection.h"
#include "net/task.h"
#include "platform/file.h"

namespace ModWeb {

struct Pacing {
  /// Without a wish: about 200 KB a second. Less would be slow, and more would keep a large file's
  /// client from leaving room for others on a home's line.
  std::uint64_t pieceBytes = 10240;
  std::chrono::milliseconds pause{50};

  bool IsUnlimited() const { return pause.count() == 0; }

  /// `speed`: in KiB a second, 0 for no limit; none for the usual pace.
  static Pacing For(std::optional<std::int16_t> speed) {
    if (!speed) return {};
    if (*speed == 0) return {.pieceBytes = UINT64_MAX, .pause = std::chrono::milliseconds(0)};
    // Pieces of a twentieth of a second, but not so small that they cost more than they carry.
    constexpr std::uint64_t kLeast = 1024;
    const std::uint64_t perSecond = static_cast<std::uint64_t>(*speed) * 1024;
    const std::uint64_t piece = perSecond / 20;
    if (piece >= kLeast) return {.pieceBytes = piece};
    return {.pieceBytes = kLeast, .pause = std::chrono::milliseconds(kLeast * 1000 / perSecond)};
  }
};

/// Sends `size` bytes of `file`, which must live until then, from `offset`. Returns when the system
/// has taken them; the text says why that failed.
net::Task<std::optional<std::string>> SendPaced(const platform::File& file, std::uint64_t offset,
                                                std::uint64_t size, Pacing pacing,
                                                std::shared_ptr<net::Connection> client);

}  // namespace ModWeb
