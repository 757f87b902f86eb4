#include "files/pending_flush.h"

#include <filesystem>

#include "platform/native_path.h"

namespace files {

namespace fs = std::filesystem;
using platform::File;

PendingFlush::PendingFlush(std::string_view path, std::error_code& error) {
  const fs::path native = platform::ExistingPath(path);
  if (!fs::exists(native, error)) {
    error = std::make_error_code(std::errc::no_such_file_or_directory);
    return;
  }
  folder_ = native.parent_path().native();
  // Windows flushes only files that are open for writing.
  file_ = File::Open(native, File::Mode::kUpdate, error);
}

std::error_code PendingFlush::Flush() {
  std::error_code error;
  file_.Flush(error);
  if (!error) File::FlushFolder(folder_, error);
  return error;
}

}  // namespace files
