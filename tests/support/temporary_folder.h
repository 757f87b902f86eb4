#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace test {

/// A fresh folder that goes with the object, and files in it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Native() const { return path_; }

  /// The path text of an entry, "a\\b"; of the folder itself for an empty name.
  std::string Text(std::string_view name = "") const;

  /// The native path of an entry; `name` is UTF-8 and may use "/".
  std::filesystem::path Path(std::string_view name) const {
    return path_ / std::filesystem::path(std::u8string(name.begin(), name.end()));
  }

  /// Writes a file, making the folders above it.
  void Write(std::string_view name, std::string_view content) const;

  /// Empty if there is none.
  std::string Read(std::string_view name) const;

  bool Has(std::string_view name) const { return std::filesystem::exists(Path(name)); }

 private:
  std::filesystem::path path_;
};

}  // namespace test
