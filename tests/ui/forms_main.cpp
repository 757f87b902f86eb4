// The main of the tests that drive forms. They run on the toolkit's thread, the main one, where the
// modal loops of the forms serve the events. Needs a display.

#include <gtest/gtest.h>

#include "tests/ui/toolkit_start.h"

namespace {

void FailByAssertion(const wxString& file, int line, const wxString&, const wxString& condition,
                     const wxString& message) {
  ADD_FAILURE_AT(file.utf8_str(), line) << condition.utf8_str() << ": " << message.utf8_str();
}

}  // namespace

int main(int argumentCount, char** arguments) {
  testing::InitGoogleTest(&argumentCount, arguments);
  if (!test::StartToolkit(arguments)) return 1;
  wxSetAssertHandler(FailByAssertion);
  int result = 0;
  {
    const test::WindowLoopHost host;
    result = RUN_ALL_TESTS();
  }
  wxEntryCleanup();
  return result;
}
