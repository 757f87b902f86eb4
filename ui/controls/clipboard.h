#pragma once

#include <string>

namespace ui {

/// Puts a text on the clipboard. False if another program has it.
bool CopyToClipboard(const std::string& text);

}  // namespace ui
