#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "files/client_files.h"
#include "platform/native_path.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kInside = "inside";
constexpr std::string_view kOutside = "outside";

// A root of folders, files and links that the input makes, and beside it what nobody may reach.
class Ground {
 public:
  Ground() {
    fs::remove_all(path_);
    fs::create_directories(path_ / "out/sub");
    fs::create_directories(path_ / "root");
    Write("out/secret", kOutside);
    Write("out/sub/secret", kOutside);
  }

  void Empty() const {
    for (const auto& entry : fs::directory_iterator(path_ / "root")) fs::remove_all(entry);
  }

  // An entry in a folder of the root, if there is that folder.
  void Make(std::uint8_t what, std::uint8_t where) const {
    std::error_code ignored;
    const fs::path folder = path_ / "root" / kFolders.at(where % kFolders.size());
    const fs::path name = folder / kNames.at(what / 4 % kNames.size());
    if (!IsInside(folder) || fs::exists(fs::symlink_status(name))) return;
    if (what % 4 == 0) {
      fs::create_directory(name, ignored);
    } else if (what % 4 == 1) {
      std::ofstream(name) << kInside;
    } else {
      fs::create_symlink(TargetOf(what / 4 % (kTargets.size() + 1)), name, ignored);
    }
  }

  bool IsOutsideUntouched() const {
    const auto count = std::distance(fs::recursive_directory_iterator(path_ / "out"),
                                     fs::recursive_directory_iterator());
    return count == 3 && Read("out/secret") == kOutside && Read("out/sub/secret") == kOutside &&
           std::distance(fs::directory_iterator(path_), fs::directory_iterator()) == 2;
  }

  std::string Root() const { return platform::PathText(path_ / "root"); }

 private:
  static constexpr std::array<const char*, 5> kFolders = {"", "a", "a/b", "A", "link"};
  static constexpr std::array<const char*, 6> kNames = {"a", "b", "A", "link", "secret", "sub"};
  static constexpr std::array<const char*, 6> kTargets = {"../out", "../../out", "/",
                                                          "a",      "..",        "../out/secret"};

  fs::path TargetOf(std::size_t index) const {
    return index < kTargets.size() ? fs::path(kTargets.at(index)) : path_ / "out";
  }

  bool IsInside(const fs::path& folder) const {
    std::error_code error;
    const fs::path real = fs::canonical(folder, error);
    return !error && real.native().starts_with((path_ / "root").native());
  }
  void Write(const char* name, std::string_view content) const {
    std::ofstream(path_ / name) << content;
  }
  std::string Read(const char* name) const {
    std::ifstream file(path_ / name);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  const fs::path path_ = fs::temp_directory_path() / "tarnwerk-fuzz-confined";
};

// Everything that a client can do with a name.
void Try(const files::ClientFiles& files, const std::string& path, const std::string& other) {
  std::error_code error;
  platform::File file = files.OpenToRead(path, error);
  if (file.IsOpen()) {
    std::array<char, 16> content;
    const std::size_t size = file.Read(content.data(), content.size(), error);
    fuzz::Require(std::string_view(content.data(), size) != kOutside);
  }
  platform::File written = files.OpenToUpdate(path, error);
  if (written.IsOpen()) written.Write(kInside, error);
  files.ReadFolder(path, error);
  files.CreateFolder(path);
  files.Rename(path, other);
  files.RemoveFile(other);
  files.RemoveFolder(path);
}

}  // namespace

// The input's first bytes make the tree, two for each entry; names follow, divided by zero bytes.
// However the tree and the names are, nothing outside the root is read or changed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Ground ground;
  static const std::string root = ground.Root();
  static const files::Confinement confinement{.isOn = true};
  constexpr std::size_t kEntries = 8;
  if (size < 2 * kEntries) return 0;
  ground.Empty();
  for (std::size_t i = 0; i < kEntries; ++i) ground.Make(data[2 * i], data[2 * i + 1]);
  const files::ClientFiles files(root, confinement);
  std::string former = root + "\\x";
  std::string_view names = fuzz::Text(data + 2 * kEntries, size - 2 * kEntries);
  for (int count = 0; !names.empty() && count < 32; ++count) {
    const std::string name(names.substr(0, names.find('\0')));
    names.remove_prefix(std::min(names.size(), name.size() + 1));
    const std::string path = root + "\\" + name;
    Try(files, path, former);
    former = path;
  }
  fuzz::Require(ground.IsOutsideUntouched());
  return 0;
}
