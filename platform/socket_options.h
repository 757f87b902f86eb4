#pragma once

// Socket options that have no portable name.

#include <cstddef>
#include <cstdint>

namespace platform {

/// A SOCKET or a file descriptor.
using NativeSocket = std::uintptr_t;

/// For a listener, before it is bound. Linux: the address can be reused immediately after a stop.
/// Windows: the address is exclusive, so that a taken port is reported as taken.
void ClaimAddress(NativeSocket listener);

/// Sends small packets at once, and detects a vanished peer within about two minutes. Connections
/// inherit this from their listener.
void PrepareForTraffic(NativeSocket socket);

/// Whether the peer has shut down its side or is gone, even if unread bytes are still queued.
/// Windows may report it only after they have been read.
bool HasPeerShut(NativeSocket socket);

/// The bytes sent but not yet acknowledged by the peer's system; 0 if the system cannot tell.
std::size_t UnconfirmedBytes(NativeSocket socket);

}  // namespace platform
