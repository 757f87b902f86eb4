#pragma once

// Classifies the errors of socket calls. Compares numbers: not all categories of these errors
// compare equal to std::errc.

#include <system_error>

namespace platform {

/// The local address, or the pair of addresses, is unavailable: in use, or still reserved after a
/// connection that ended a moment ago.
bool IsAddressRefused(const std::error_code& error);

/// Out of descriptors or memory for another connection. Usually temporary.
bool IsShortage(const std::error_code& error);

}  // namespace platform
