#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "platform/native_path.h"

namespace test {

/// A fresh folder that goes with the object, and files in it.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    const std::string name = "tarnwerk-test-" + std::to_string(std::random_device()());
    path_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directory(path_);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Native() const { return path_; }

  /// The path text of an entry, "a\\b"; of the folder itself for an empty name.
  std::string Text(std::string_view name = "") const {
    const std::string folder = platform::PathText(path_);
    return name.empty() ? folder : folder + "\\" + std::string(name);
  }

  /// The native path of an entry; `name` is UTF-8 and may use "/".
  std::filesystem::path Path(std::string_view name) const {
    return path_ / std::filesystem::path(std::u8string(name.begin(), name.end()));
  }

  /// Writes a file, making the folders above it.
  void Write(std::string_view name, std::string_view content) const {
    std::filesystem::create_directories(Path(name).parent_path());
    std::ofstream(Path(name), std::ios::binary) << content;
  }

  /// Empty if there is none.
  std::string Read(std::string_view name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  bool Has(std::string_view name) const { return std::filesystem::exists(Path(name)); }

 private:
  std::filesystem::path path_;
};

}  // namespace test
