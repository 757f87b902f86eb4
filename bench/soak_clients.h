#pragma once

// The clients of the soak, each kind from connecting to leaving: well-behaved ones, and ones that
// stay silent, leave early, reset, shut one side, flood, never read, or attack.

#include <functional>
#include <string>
#include <vector>

#include "bench/sockets.h"
#include "bench/tarnwerk.h"

namespace bench {

using Kinds = std::vector<std::function<void()>>;

Kinds WebKinds(const Tarnwerk& tarnwerk);
/// For the other three ports.
Kinds OtherKinds(const Tarnwerk& tarnwerk);

/// Clients that stay in the middle of an exchange for as long as the object lives.
std::vector<Descriptor> ComeToStay(const Tarnwerk& tarnwerk);

/// Reads what arrives within a moment, at most `most` bytes.
std::string Receive(const Descriptor& client, std::size_t most = 4096);

}  // namespace bench
