#pragma once

// Encodes a text as a QR code, a square of dark and light modules. Readers need a margin of
// kQuietZone light modules around it, which is not included.

#include <optional>
#include <string>
#include <vector>

namespace ui {

inline constexpr int kQuietZone = 4;  // modules

struct QrCode {
  int size = 0;            // modules per side
  std::vector<bool> dark;  // row by row

  bool IsDark(int column, int row) const {
    return dark[static_cast<std::size_t>(row) * static_cast<std::size_t>(size) +
                static_cast<std::size_t>(column)];
  }
};

/// None if the text is empty or too long for a code (some 2,300 bytes).
std::optional<QrCode> MakeQrCode(const std::string& text);

}  // namespace ui
