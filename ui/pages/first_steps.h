#pragma once

// What a new user does first, in order: put something in, start, give the address to somebody,
// protect the files. Each step is a button until it is done, in whatever way, and then a tick; the
// next one stands out. The list disappears for good once all are done or the user dismisses it.

#include <wx/panel.h>

#include <array>
#include <functional>

#include "ui/controls/card.h"

class wxBoxSizer;
class wxButton;
class wxFlexGridSizer;
class wxStaticBitmap;
class wxStaticText;

namespace ui {

/// Which steps are done.
struct StepsDone {
  bool putContent = false;   // the Web or the FTP folder has files
  bool start = false;        // a service runs
  bool giveAddress = false;  // an address was passed on, or somebody was there
  bool protect = false;      // visitors can change files in the upload folder at most

  std::array<bool, 4> InOrder() const { return {putContent, start, giveAddress, protect}; }
};

class FirstSteps : public Card {
 public:
  struct Actions {
    std::function<void()> putPage;
    std::function<void()> startAll;
    std::function<void()> giveAddress;
    std::function<void()> protect;
  };

  FirstSteps(wxWindow* parent, const Actions& actions);

  /// True if something changed and the parent must be laid out again.
  bool ShowSteps(const StepsDone& done);

  /// False hides the list.
  bool ShowAtAll(bool shown);

  /// Uses several lines if one would be wider than `width` pixels.
  void FitInto(int width);

  /// False once all steps have been done, or the user has dismissed them.
  static bool AreWanted();

  /// That the user has passed an address on, or that somebody has come.
  static bool WasAddressGiven();
  static void RememberAddressGiven();

 private:
  struct Step {
    wxStaticBitmap* tick;
    wxStaticText* done;
    wxButton* button;
  };

  Step MakeStep(const char* name, const char* text, const std::function<void()>& action);
  bool ShowStep(Step& step, bool isDone, bool isNext);
  void Dismiss();

  wxBoxSizer* parts_;
  wxFlexGridSizer* grid_;
  std::array<Step, 4> steps_;
};

}  // namespace ui
