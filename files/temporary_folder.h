#pragma once

// A private folder for files that are needed no longer than the program runs. It is created when it
// is first needed and removed with this object.

#include <filesystem>
#include <string>
#include <string_view>

namespace files {

class TemporaryFolder {
 public:
  TemporaryFolder() = default;
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// The path text of a file of that name, a safe one, in a folder of its own. Empty if none can be
  /// created.
  std::string NewFile(std::string_view name);

 private:
  std::filesystem::path folder_;
  int count_ = 0;
};

}  // namespace files
