#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdio.h>

#include <atomic>
#include <thread>

#include "files/client_files.h"
#include "tests/support/temporary_folder.h"

namespace files {
namespace {

// Exchanges a folder for a link that leads out, and back, as fast as the system can.
class Exchanger {
 public:
  explicit Exchanger(const test::TemporaryFolder& folder)
      : thread_([this, a = folder.Path("root/door"), b = folder.Path("root/link")] {
          while (!ended_) {
            renameat2(AT_FDCWD, a.c_str(), AT_FDCWD, b.c_str(), RENAME_EXCHANGE);
            ++count_;
          }
        }) {}
  ~Exchanger() {
    ended_ = true;
    thread_.join();
  }
  long Count() const { return count_; }

 private:
  std::atomic<bool> ended_ = false;
  std::atomic<long> count_ = 0;
  std::thread thread_;
};

TEST(ConfinedFiles, AnExchangedLinkLeadsNowhere) {
  const test::TemporaryFolder folder;
  folder.Write("root/door/file", "inside");
  folder.Write("out/file", "outside");
  std::filesystem::create_symlink("../out", folder.Path("root/link"));
  const std::string root = folder.Text("root");
  const Confinement confinement{.isOn = true};
  const ClientFiles files(root, confinement);
  long opened = 0;
  const Exchanger exchanger(folder);
  for (int i = 0; exchanger.Count() < 100'000 || opened == 0; ++i) {
    std::error_code error;
    platform::File file = files.OpenToRead(root + "\\door\\file", error);
    char content[16];
    if (file.IsOpen() && ++opened) {
      ASSERT_EQ(std::string(content, file.Read(content, sizeof(content), error)), "inside");
    }
    files.OpenToUpdate(root + "\\door\\new" + std::to_string(i % 10), error);
    files.CreateFolder(root + "\\door\\made");
    files.RemoveFolder(root + "\\door\\made");
    files.RemoveFile(root + "\\door\\new" + std::to_string(i % 10));
  }
  std::error_code error;
  EXPECT_EQ(files::ListFolder(folder.Text("out"), error).size(), 1U);
}

}  // namespace
}  // namespace files
