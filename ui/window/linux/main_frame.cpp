#include "ui/window/main_frame.h"

namespace ui {

// Running instances are found by other means here, see platform/running_instance.h.
MainFrame::MainFrame(const wxString& caption)
    : wxFrame(nullptr, wxID_ANY, caption, wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE | wxTAB_TRAVERSAL) {}

}  // namespace ui
