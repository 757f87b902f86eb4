#include "tests/support/temporary_folder.h"

#include <fstream>
#include <iterator>
#include <random>

#include "platform/native_path.h"

namespace test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::random_device random;
  do {
    path_ = fs::temp_directory_path() / ("tarnwerk-test-" + std::to_string(random()));
  } while (!fs::create_directory(path_));
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::Text(std::string_view name) const {
  const std::string folder = platform::PathText(path_);
  return name.empty() ? folder : folder + "\\" + std::string(name);
}

void TemporaryFolder::Write(std::string_view name, std::string_view content) const {
  fs::create_directories(Path(name).parent_path());
  std::ofstream(Path(name), std::ios::binary) << content;
}

std::string TemporaryFolder::Read(std::string_view name) const {
  std::ifstream file(Path(name), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace test
