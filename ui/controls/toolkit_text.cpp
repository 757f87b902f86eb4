#include "ui/controls/toolkit_text.h"

#include <wx/strconv.h>

namespace ui {
namespace {

const wxMBConvUTF8& Lossless() {
  static const wxMBConvUTF8 conversion(wxMBConvUTF8::MAP_INVALID_UTF8_TO_PUA);
  return conversion;
}

}  // namespace

wxString Shown(const std::string& utf8) { return {utf8.data(), Lossless(), utf8.size()}; }

std::string Typed(const wxString& text) {
  const wxScopedCharBuffer bytes = text.mb_str(Lossless());
  return {bytes.data(), bytes.length()};
}

}  // namespace ui
