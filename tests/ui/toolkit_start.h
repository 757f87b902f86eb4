#pragma once

// Starts the window toolkit on the main thread of a test program. Needs a display.

#include <wx/app.h>
#include <wx/init.h>

#include <cstdio>

#include "net/window_loop.h"
#include "tests/support/loop_host.h"

namespace test {

/// Prints a message and returns false if the toolkit does not start.
inline bool StartToolkit(char** arguments) {
  wxApp::SetInstance(new wxApp);
  int none = 1;  // the program's name alone; the arguments are for the tests
  if (wxEntryStart(none, arguments) && wxTheApp->CallOnInit()) return true;
  std::puts("the window toolkit does not start: is there a display?");
  return false;
}

/// The loop under test is the toolkit's. Tests on the main thread must not go through its Call.
class WindowLoopHost : public LoopHost {
 public:
  WindowLoopHost() { SetLoopHost(*this); }
  net::EventLoop& Loop() override { return loop_.Events(); }

 private:
  net::WindowLoop loop_;
};

}  // namespace test
