#pragma once

// Transfers of a file by minimal loops: what the FTP server can reach at best.

#include <cstddef>
#include <string>

namespace bench {

/// Seconds a plain loop takes to send the file within this process, 4 KiB at a time like the
/// server.
double PlainSend(const std::string& path);

/// Seconds a plain loop takes to receive that many bytes and write them to the file.
double PlainReceive(const std::string& path, std::size_t bytes);

}  // namespace bench
