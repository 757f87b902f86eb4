#pragma once

// What the error of a socket call means. Told by its number: the categories that such errors come
// in do not all compare with std::errc.

#include <system_error>

namespace platform {

/// The system does not let us have the local address, or this pair of addresses: in use, or
/// remembered from a connection that ended a moment ago.
bool IsAddressRefused(const std::error_code& error);

/// There are too few descriptors, or too little memory, for one more connection. It may pass.
bool IsShortage(const std::error_code& error);

}  // namespace platform
