#pragma once

// Writing all of a file at once. To replace a file's content safely, write beside it and rename.

#include <filesystem>
#include <string_view>
#include <system_error>

namespace platform {

/// Creates or empties `path`, writes `bytes` and returns once they would survive a power cut. After
/// a failed write the file is removed, so that no part of the content is left behind.
void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes,
                    std::error_code& error);

}  // namespace platform
