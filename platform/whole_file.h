#pragma once

// Writing a complete file. To replace a file safely, write another beside it and rename that.

#include <filesystem>
#include <string_view>
#include <system_error>

namespace platform {

/// Creates or truncates `path`, writes `bytes` and returns once they would survive a power failure.
/// On failure the file is removed, so that no partial content is left.
void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes,
                    std::error_code& error);

}  // namespace platform
