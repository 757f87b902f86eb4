#pragma once

// How test programs start the window toolkit on their main thread. Needs a display.

#include <wx/app.h>
#include <wx/init.h>

#include <cstdio>

#include "net/window_loop.h"
#include "tests/support/loop_host.h"

namespace test {

/// False, having said so, if the toolkit does not start.
inline bool StartToolkit(char** arguments) {
  wxApp::SetInstance(new wxApp);
  int none = 1;  // it sees the program's name and none of its words
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
