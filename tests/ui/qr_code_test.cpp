// QR codes as another program reads them: Debian's zbar-tools.

#include "ui/controls/qr_code.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/support/temporary_folder.h"

namespace {

// A picture in the simplest of formats, with the light side around it.
std::string Picture(const ui::QrCode& code) {
  constexpr int kPixels = 4;  // of a module
  const int width = kPixels * (code.size + 2 * ui::kQuietZone);
  std::string picture = "P1\n" + std::to_string(width) + " " + std::to_string(width) + "\n";
  const auto isInside = [&](int module) { return module >= 0 && module < code.size; };
  for (int pixel = 0; pixel < width * width; ++pixel) {
    const int column = pixel % width / kPixels - ui::kQuietZone;
    const int row = pixel / width / kPixels - ui::kQuietZone;
    picture += isInside(column) && isInside(row) && code.IsDark(column, row) ? "1\n" : "0\n";
  }
  return picture;
}

TEST(QrCode, IsReadAsItWasWritten) {
  const test::TemporaryFolder folder;
  const std::string command =
      "cd '" + folder.Path("").string() + "' && zbarimg --quiet --raw --nodbus code.pbm >read";
  for (const std::string& text :
       {std::string("http://10.0.0.5/"), "http://192.168.1.5/" + std::string(700, 'a')}) {
    folder.Write("code.pbm", Picture(ui::MakeQrCode(text).value()));
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(folder.Read("read"), text + "\n");
  }
  EXPECT_FALSE(ui::MakeQrCode(""));
  EXPECT_FALSE(ui::MakeQrCode(std::string(2400, 'a')));
}

}  // namespace
