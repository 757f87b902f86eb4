// The main of tests that drive forms: they run on the toolkit's thread, which is the main one, and
// the forms' own modal loops serve the events. Needs a display.

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/init.h>

#include <cstdio>

#include "core/window_loop.h"
#include "tests/support/loop_host.h"

namespace {

// A test must not go through its Call: it is on that thread itself.
class MainThreadLoopHost : public test::LoopHost {
 public:
  core::EventLoop& Loop() override { return loop_.Events(); }

 private:
  core::WindowLoop loop_;
};

void FailByAssertion(const wxString& file, int line, const wxString&, const wxString& condition,
                     const wxString& message) {
  ADD_FAILURE_AT(file.utf8_str(), line) << condition.utf8_str() << ": " << message.utf8_str();
}

}  // namespace

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  wxApp::SetInstance(new wxApp);
  int none = 1;
  if (!wxEntryStart(none, arguments) || !wxTheApp->CallOnInit()) {
    std::puts("the window toolkit does not start: is there a display?");
    return 1;
  }
  wxSetAssertHandler(FailByAssertion);
  int result = 0;
  {
    MainThreadLoopHost host;
    test::SetLoopHost(host);
    result = RUN_ALL_TESTS();
  }
  wxEntryCleanup();
  return result;
}
