#include "ui/controls/clipboard.h"

#include <wx/clipbrd.h>

#include "ui/controls/toolkit_text.h"

namespace ui {

bool CopyToClipboard(const std::string& text) {
  wxClipboardLocker clipboard;
  return !!clipboard && wxTheClipboard->SetData(new wxTextDataObject(Shown(text)));
}

}  // namespace ui
