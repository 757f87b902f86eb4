#pragma once

// A QR code as a picture, black on white even in dark themes: readers need the light margin.

#include <wx/window.h>

#include <optional>
#include <string>

#include "ui/controls/qr_code.h"

namespace ui {

class QrPicture : public wxWindow {
 public:
  explicit QrPicture(wxWindow* parent);

  void ShowText(const std::string& text);
  const std::string& Text() const { return text_; }

  bool AcceptsFocus() const override { return false; }

 private:
  void OnPaint();

  std::string text_;
  std::optional<QrCode> code_;
};

}  // namespace ui
