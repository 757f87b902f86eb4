#include "ui/window/splash_screen.h"

#include <wx/app.h>
#include <wx/dcmemory.h>
#include <wx/settings.h>
#include <wx/splash.h>

#include <utility>

#include "ui/controls/art.h"
#include "ui/controls/colours.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

constexpr int kShownFor = 400;  // milliseconds
const wxSize kSize(360, 168);
constexpr int kLogoSize = 96;
constexpr int kLetterHeight = 18;
constexpr float kNameFactor = 2.4F;

// The window's font, as high as the picture has room for: systems differ in whether they scale
// letters in a picture for the screen.
wxFont LetterFont(wxDC& picture) {
  const wxFont font = wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
  picture.SetFont(font);
  const int height = wxWindow::FromDIP(kLetterHeight, nullptr);
  return font.Scaled(static_cast<float>(height) / static_cast<float>(picture.GetCharHeight()));
}

wxBitmap Draw() {
  const wxWindow* const nowhere = nullptr;
  const auto scaled = [&](int length) { return wxWindow::FromDIP(length, nowhere); };
  wxBitmap bitmap(wxWindow::FromDIP(kSize, nowhere));
  wxMemoryDC dc(bitmap);
  const wxColour top(0x14, 0x50, 0xa0);
  const wxColour bottom(0x2f, 0x9b, 0xea);
  dc.GradientFillLinear(wxRect(bitmap.GetSize()), top, bottom, wxSOUTH);
  const int logo = scaled(kLogoSize);
  const int middle = bitmap.GetHeight() / 2;
  dc.DrawBitmap(Art("tarnwerk", kLogoSize).GetBitmap(wxSize(logo, logo)), scaled(2 * kEdge),
                middle - logo / 2, true);
  const int left = scaled(4 * kEdge) + logo;
  dc.SetTextForeground(*wxWHITE);
  const wxFont font = LetterFont(dc);
  dc.SetFont(font.Bold().Scaled(kNameFactor));
  dc.DrawText("Tarnwerk", left, middle - dc.GetCharHeight());
  dc.SetFont(font);
  dc.DrawText(Shown("个人网络服务器管理"), left, middle + scaled(kGap));
  dc.DrawText(Shown("版本 " TARNWERK_VERSION), left, middle + scaled(kGap) + dc.GetCharHeight());
  return bitmap;
}

class SplashScreen : public wxSplashScreen {
 public:
  explicit SplashScreen(std::function<void()> then)
      : wxSplashScreen(Draw(), wxSPLASH_CENTRE_ON_SCREEN | wxSPLASH_TIMEOUT, kShownFor, nullptr,
                       wxID_ANY, wxDefaultPosition, wxDefaultSize,
                       wxBORDER_NONE | wxFRAME_NO_TASKBAR),
        then_(std::move(then)) {
    Named(static_cast<wxWindow*>(this), "frmSplash");
    // The timeout, a click and a key all close it. The callback may wait for the user, and until
    // this window is gone, every key would close it.
    Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& event) {
      event.Skip();
      if (then_) wxTheApp->CallAfter(std::exchange(then_, nullptr));
    });
  }

 private:
  std::function<void()> then_;
};

}  // namespace

void ShowSplashScreen(std::function<void()> then) { new SplashScreen(std::move(then)); }

}  // namespace ui
