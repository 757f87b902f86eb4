#include "ui/web_options_dialog.h"

#include "ui/toolkit_text.h"

namespace ui {

frmWebOptions::frmWebOptions(wxWindow* parent, const core::Program&, ModWeb::WebServer&)
    : wxDialog(parent, wxID_ANY, Shown("Web服务器选项")) {}

}  // namespace ui
