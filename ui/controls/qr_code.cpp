#include "ui/controls/qr_code.h"

#include <qrencode.h>

#include <memory>

namespace ui {
namespace {

constexpr int kSmallestVersion = 0;  // the smallest that holds the text

}  // namespace

std::optional<QrCode> MakeQrCode(const std::string& text) {
  // Level M tolerates a seventh of unreadable modules: screens reflect light.
  const std::unique_ptr<QRcode, void (*)(QRcode*)> made(
      QRcode_encodeString8bit(text.c_str(), kSmallestVersion, QR_ECLEVEL_M), QRcode_free);
  if (!made) return std::nullopt;
  QrCode code{.size = made->width, .dark = {}};
  const int modules = code.size * code.size;
  for (int i = 0; i < modules; ++i) code.dark.push_back((made->data[i] & 1U) != 0);
  return code;
}

}  // namespace ui
