// The main of test programs whose servers run in the window toolkit's loop.
//
// The toolkit has the main thread, the tests another. TARNWERK_TEST_OPEN names what is open while
// they run: "dialog" (a modal one of the toolkit), "message box" (the system's own), "menu" (a
// pop-up menu) or "nothing". It must make no difference to the servers.

#include <gtest/gtest.h>
#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "tests/ui/toolkit_start.h"

namespace {

// Returns only when a user closes it: never.
void OpenAndStay(const std::string& what, wxWindow* parent) {
  if (what == "dialog") {
    wxDialog(parent, wxID_ANY, "Modal").ShowModal();
  } else if (what == "message box") {
    wxMessageBox("A message", "Box", wxOK | wxICON_INFORMATION, parent);
  } else if (what == "menu") {
    wxMenu menu;
    menu.Append(wxID_ABOUT, "An item");
    parent->PopupMenu(&menu);
  }
}

std::atomic<bool> returned = false;

void RunTestsAndExit() {
  const int result = RUN_ALL_TESTS();
  if (returned) std::puts("what was to stay open was closed before the tests had ended");
  std::fflush(nullptr);
  // Not back through the main thread, which sits in a loop that only a user can end.
  std::_Exit(result != 0 || returned ? 1 : 0);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  if (!test::StartToolkit(arguments)) return 1;
  test::WindowLoopHost host;
  auto* frame = new wxFrame(nullptr, wxID_ANY, "Under test");
  frame->Show();
  const char* name = std::getenv("TARNWERK_TEST_OPEN");
  const std::string what = name == nullptr ? "nothing" : name;
  frame->CallAfter([&] {
    // Runs inside the loop of what is opened, so that the first test finds it open.
    host.Loop().Post([] { std::thread(RunTestsAndExit).detach(); });
    OpenAndStay(what, frame);
    returned = what != "nothing";
  });
  return wxTheApp->OnRun();
}
