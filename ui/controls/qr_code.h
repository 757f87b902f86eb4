#pragma once

// A text as a QR code: a square of dark and light modules that telephones read. A reader needs
// kQuietZone light modules around it, which whoever draws it adds.

#include <optional>
#include <string>
#include <vector>

namespace ui {

inline constexpr int kQuietZone = 4;  // modules

struct QrCode {
  int size = 0;            // modules in a row, and rows
  std::vector<bool> dark;  // row by row

  bool IsDark(int column, int row) const {
    return dark[static_cast<std::size_t>(row) * static_cast<std::size_t>(size) +
                static_cast<std::size_t>(column)];
  }
};

/// None if the text is empty or longer than a code can hold (some 2,300 bytes).
std::optional<QrCode> MakeQrCode(const std::string& text);

}  // namespace ui
