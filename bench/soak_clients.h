#pragma once

// The clients of the soak, each kind from connecting to leaving: those that do what they should,
// and those that say nothing, leave early, reset, shut one side, flood, never read, or want to
// hurt.

#include <functional>
#include <string>
#include <vector>

#include "bench/sockets.h"
#include "bench/tarnwerk.h"

namespace bench {

using Kinds = std::vector<std::function<void()>>;

Kinds WebKinds(const Tarnwerk& tarnwerk);
/// Of the other three ports.
Kinds OtherKinds(const Tarnwerk& tarnwerk);

/// Clients in the middle of what they do, for as long as they are kept.
std::vector<Descriptor> ComeToStay(const Tarnwerk& tarnwerk);

/// Reads what comes within a moment, at most `most` bytes.
std::string Receive(const Descriptor& client, std::size_t most = 4096);

}  // namespace bench
