#pragma once

// What a new user does first, in order: put something in, start, have every browser show the pages,
// give the address to somebody, protect the files. Each step is a button until it is done, in
// whatever way, and then a tick; the next one stands out. The list disappears for good once all
// that are needed are done, or the user dismisses it.

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

/// An optional step is offered, but the list does not wait for it.
enum class StepState { kDone, kNeeded, kOptional };

/// How far the steps are.
struct StepStates {
  StepState putContent = StepState::kNeeded;   // done: the Web or the FTP folder has files
  StepState start = StepState::kNeeded;        // a service runs
  StepState forBrowsers = StepState::kNeeded;  // the Web server answers with HTTP
  StepState giveAddress = StepState::kNeeded;  // an address was passed on, or somebody was there
  StepState protect = StepState::kNeeded;      // visitors change files in the upload folder at most

  std::array<StepState, 5> InOrder() const {
    return {putContent, start, forBrowsers, giveAddress, protect};
  }
};

class FirstSteps : public Card {
 public:
  struct Actions {
    std::function<void()> putPage;
    std::function<void()> startAll;
    std::function<void()> forBrowsers;
    std::function<void()> giveAddress;
    std::function<void()> protect;
  };

  FirstSteps(wxWindow* parent, const Actions& actions);

  /// True if something changed and the parent must be laid out again.
  bool ShowSteps(const StepStates& states);

  /// False hides the list.
  bool ShowAtAll(bool shown);

  /// Uses several lines if one would be wider than `width` pixels.
  void FitInto(int width);

  /// False once all steps that are needed have been done, or the user has dismissed them.
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
  std::array<Step, 5> steps_;
};

}  // namespace ui
