#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <set>

#include "files/files.h"
#include "platform/native_path.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongestPath = 4096;
constexpr std::size_t kLongestName = 1 << 20;  // that is tried

// A small tree. What is in it is also kept by its names in upper case, with "\" between them.
class Tree {
 public:
  Tree() : path_(fs::temp_directory_path() / "tarnwerk-fuzz-lookup") {
    fs::remove_all(path_);
    for (const char* folder : {"", "a", "a/a", "a/a/A", "Moved", "Moved/b.c"}) AddFolder(folder);
    for (const char* file : {"x", "a/a/a", "a/x.htm", "Moved/b.c/Y", "a/A.txt"}) AddFile(file);
    root_ = platform::PathText(path_);
  }

  const std::string& Root() const { return root_; }

  bool HasFile(std::string_view name) const { return files_.contains(Key(name)); }
  bool HasFolder(std::string_view name) const { return folders_.contains(Key(name)); }

 private:
  static std::string Key(std::string_view name) {
    std::string key;
    for (const char c : name) {
      const bool separates = c == '\\' || c == '/';
      if (separates && (key.empty() || key.back() == '\\')) continue;
      key += separates ? '\\' : static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    while (key.ends_with('\\')) key.pop_back();
    return key;
  }
  void AddFolder(const char* name) {
    fs::create_directories(path_ / name);
    folders_.insert(Key(name));
  }
  void AddFile(const char* name) {
    std::ofstream(path_ / name) << "x";
    files_.insert(Key(name));
  }

  fs::path path_;
  std::string root_;
  std::set<std::string> files_;
  std::set<std::string> folders_;
};

// "." and ".." lead elsewhere, and the tree does not know where.
bool LeadsAbout(std::string_view name) {
  std::size_t begin = 0;
  while (begin <= name.size()) {
    const std::size_t end = std::min(name.find_first_of("\\/", begin), name.size());
    const std::string_view part = name.substr(begin, end - begin);
    if (part == "." || part == "..") return true;
    begin = end + 1;
  }
  return false;
}

// A path as long as the input wants it: the first byte says how often the rest is repeated.
std::string NameOf(std::string_view input) {
  if (input.empty()) return {};
  std::string name;
  const std::string_view part = input.substr(1);
  const int times = 1 + static_cast<unsigned char>(input[0]);
  for (int i = 0; i < times && name.size() < kLongestName; ++i) name += part;
  return name;
}

}  // namespace

// Nothing exists but what was made, however long, deep or odd the name is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Tree tree;
  const std::string name = NameOf(fuzz::Text(data, size));
  const std::string path = tree.Root() + '\\' + name;
  const bool isFile = ModCommon::FileExists(path);
  const bool isFolder = files::FolderExists(path);
  std::error_code error;
  files::InspectPath(path, error);
  fuzz::Require(!error || !(isFile || isFolder));
  if (name.find('\0') != std::string::npos || path.size() > kLongestPath) {
    fuzz::Require(error && !isFile && !isFolder);
  } else if (!LeadsAbout(name)) {
    fuzz::Require(isFile <= tree.HasFile(name));
    fuzz::Require(isFolder <= tree.HasFolder(name));
    fuzz::Require(error || tree.HasFile(name) || tree.HasFolder(name));
  }
  return 0;
}
