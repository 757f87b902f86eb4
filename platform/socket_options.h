#pragma once

// Settings of sockets that have no portable name.

#include <cstddef>
#include <cstdint>

namespace platform {

/// A SOCKET or a file descriptor.
using NativeSocket = std::uintptr_t;

/// For a listener, before it is bound. Linux: the address may be used again at once after a stop.
/// Windows: the address is ours alone, so that a taken port is reported as taken.
void ClaimAddress(NativeSocket listener);

/// Small sends go out at once, and a peer that vanished is noticed within about two minutes. Set on
/// a listener, the connections that it accepts have it too.
void PrepareForTraffic(NativeSocket socket);

/// Whether the peer has shut its side or is gone, even if bytes that nobody has read stand in front
/// of that. Windows may tell it only once these have been read.
bool HasPeerShut(NativeSocket socket);

/// The bytes sent that the peer's system has not confirmed yet; 0 where the system does not tell.
std::size_t UnconfirmedBytes(NativeSocket socket);

}  // namespace platform
