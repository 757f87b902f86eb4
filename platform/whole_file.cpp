#include "platform/whole_file.h"

#include "platform/file.h"

namespace platform {

void WriteWholeFile(const std::filesystem::path& path, std::string_view bytes,
                    std::error_code& error) {
  File file = File::Open(path, File::Mode::kReplace, error);
  if (!file.IsOpen()) return;
  file.Write(bytes, error);
  if (!error) file.Flush(error);
  file.Close();
  std::error_code ignored;
  if (error) std::filesystem::remove(path, ignored);
}

}  // namespace platform
