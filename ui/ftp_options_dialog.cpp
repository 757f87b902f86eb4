#include "ui/ftp_options_dialog.h"

#include "ui/toolkit_text.h"

namespace ui {

frmFtpOptions::frmFtpOptions(wxWindow* parent, const core::Program&, ModFtp::FtpServer&)
    : wxDialog(parent, wxID_ANY, Shown("Ftp服务器选项")) {}

}  // namespace ui
