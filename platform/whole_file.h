#pragma once

// Reading and replacing all of a file at once.

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/file.h"

namespace platform {

/// The rest of `file`, which is open for reading. More than `most` bytes are an error, and little
/// more than that is read to find out.
std::string ReadWholeFile(File& file, std::size_t most, std::error_code& error);

/// Who may open a file that has been replaced.
enum class Access {
  kKept,       // as before
  kUserAlone,  // the user alone, from the file's first moment on (Linux; Windows: as kKept)
};

/// Replaces the content of `path`, or creates it, atomically: after a crash or a power cut it has
/// the old content or the new one. A link is replaced by a file. Nothing is left of a failed
/// attempt.
void ReplaceWholeFile(const std::filesystem::path& path, std::string_view bytes, Access access,
                      std::error_code& error);

}  // namespace platform
