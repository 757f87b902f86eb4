#include "ui/controls/qr_code.h"

#include <qrcodegen/qrcodegen.hpp>

namespace ui {
namespace {

QrCode CopyOf(const qrcodegen::QrCode& made) {
  QrCode code{.size = made.getSize(), .dark = {}};
  for (int row = 0; row < code.size; ++row) {
    for (int column = 0; column < code.size; ++column) {
      code.dark.push_back(made.getModule(column, row));
    }
  }
  return code;
}

}  // namespace

std::optional<QrCode> MakeQrCode(const std::string& text) {
  if (text.empty()) return std::nullopt;
  try {
    // Level M tolerates a seventh of unreadable modules: screens reflect light.
    return CopyOf(qrcodegen::QrCode::encodeText(text.c_str(), qrcodegen::QrCode::Ecc::MEDIUM));
  } catch (const qrcodegen::data_too_long&) {
    return std::nullopt;
  }
}

}  // namespace ui
