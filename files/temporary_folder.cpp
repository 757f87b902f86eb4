#include "files/temporary_folder.h"

#include "files/files.h"
#include "platform/native_path.h"
#include "platform/private_folder.h"
#include "text/path_text.h"

namespace files {

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;  // a program may still use a file
  if (!folder_.empty()) std::filesystem::remove_all(folder_, ignored);
}

std::string TemporaryFolder::NewFile(std::string_view name) {
  std::error_code error;
  if (folder_.empty()) folder_ = platform::MakePrivateFolder(error);
  if (folder_.empty()) return {};
  const std::string own =
      ModCommon::AddSlash(platform::PathText(folder_)) + std::to_string(++count_);
  if (CreateFolder(own)) return {};
  return ModCommon::AddSlash(own) + std::string(name);
}

}  // namespace files
