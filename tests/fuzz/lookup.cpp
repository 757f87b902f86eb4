#include <filesystem>
#include <fstream>
#include <set>

#include "files/files.h"
#include "platform/native_path.h"
#include "platform/text_case.h"
#include "tests/fuzz/fuzz_input.h"

namespace {

namespace fs = std::filesystem;

// A name in upper case with one "\" between its parts and none behind them; empty if it has a part
// "." or "..", which lead to places that this fuzzer does not follow.
std::string Key(std::string_view name) {
  std::string key;
  while (!name.empty()) {
    const std::string_view part = name.substr(0, name.find_first_of("\\/"));
    name.remove_prefix(std::min(name.size(), part.size() + 1));
    if (part == "." || part == "..") return {};
    if (!part.empty()) key += platform::UpperCase(part) + '\\';
  }
  return key;
}

// A small tree, and the keys of what is in it.
struct Tree {
  Tree() {
    fs::remove_all(path);
    for (const char* file : {"x", "a/a/a", "a/a/A/y", "a/x.htm", "Moved/b.c/Y", "a/A.txt"}) {
      fs::create_directories((path / file).parent_path());
      std::ofstream(path / file) << "x";
      files.insert(Key(file));
    }
    for (const char* folder : {"a", "a/a", "a/a/A", "Moved", "Moved/b.c"}) {
      folders.insert(Key(folder));
    }
  }

  const fs::path path = fs::temp_directory_path() / "tarnwerk-fuzz-lookup";
  std::set<std::string> files;
  std::set<std::string> folders;
};

}  // namespace

// Nothing exists but what was made, however long, deep or odd the name is. The input's first byte
// says how often the rest is repeated.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Tree tree;
  std::string name;
  for (int i = 0; size > 0 && i <= data[0] && name.size() < 1 << 20; ++i) {
    name += fuzz::Text(data + 1, size - 1);
  }
  const std::string path = platform::PathText(tree.path) + '\\' + name;
  const bool isFile = ModCommon::FileExists(path);
  const bool isFolder = files::FolderExists(path);
  std::error_code error;
  files::InspectPath(path, error);
  fuzz::Require(!error || !(isFile || isFolder));
  const std::string key = Key(name);
  // No path is longer on Linux.
  if (name.find('\0') != std::string::npos || path.size() > 4096) {
    fuzz::Require(error && !isFile && !isFolder);
  } else if (!key.empty()) {
    fuzz::Require(isFile <= tree.files.contains(key));
    fuzz::Require(isFolder <= tree.folders.contains(key));
    fuzz::Require(error || tree.files.contains(key) || tree.folders.contains(key));
  }
  return 0;
}
