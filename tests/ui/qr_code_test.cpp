// QR codes as a reader that is none of ours sees them: Debian's zbar-tools.

#include "ui/controls/qr_code.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

#include "tests/support/temporary_folder.h"

namespace {

constexpr int kPixels = 4;  // of a module

// A picture in the simplest of formats, with the light side around it.
std::string Picture(const ui::QrCode& code) {
  const int width = kPixels * (code.size + 2 * ui::kQuietZone);
  std::string picture = "P1\n" + std::to_string(width) + " " + std::to_string(width) + "\n";
  const auto isInside = [&](int module) { return module >= 0 && module < code.size; };
  for (int y = 0; y < width; ++y) {
    for (int x = 0; x < width; ++x) {
      const int column = x / kPixels - ui::kQuietZone;
      const int row = y / kPixels - ui::kQuietZone;
      const bool isDark = isInside(column) && isInside(row) && code.IsDark(column, row);
      picture += isDark ? "1\n" : "0\n";
    }
  }
  return picture;
}

std::string ReadBy(const std::string& command) {
  FILE* output = popen(command.c_str(), "r");
  std::string read;
  std::array<char, 4096> piece;
  for (std::size_t count = 0; (count = fread(piece.data(), 1, piece.size(), output)) > 0;) {
    read.append(piece.data(), count);
  }
  pclose(output);
  return read;
}

TEST(QrCode, IsReadAsItWasWritten) {
  const test::TemporaryFolder folder;
  for (const std::string& text :
       {std::string("http://10.0.0.5/"), std::string("ftp://192.168.100.200:30021/"),
        "http://192.168.1.5/" + std::string(700, 'a')}) {
    const auto code = ui::MakeQrCode(text);
    ASSERT_TRUE(code);
    folder.Write("code.pbm", Picture(*code));
    EXPECT_EQ(ReadBy("zbarimg --quiet --raw --nodbus '" + folder.Path("code.pbm").string() + "'"),
              text + "\n");
  }
}

TEST(QrCode, IsNotMadeOfWhatItCannotHold) {
  EXPECT_FALSE(ui::MakeQrCode(""));
  EXPECT_TRUE(ui::MakeQrCode(std::string(2300, 'a')));
  EXPECT_FALSE(ui::MakeQrCode(std::string(2400, 'a')));
}

}  // namespace
