#include "ui/window/main_frame.h"

namespace ui {

// Other programs find a running instance by other means here, see platform/running_instance.h.
MainFrame::MainFrame(const wxString& caption)
    : wxFrame(nullptr, wxID_ANY, caption, wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE | wxTAB_TRAVERSAL) {}

}  // namespace ui
