#pragma once

// The part of a service's page about how others reach it: the ports, how the Web server answers and
// whether browsers show that, the addresses in the network, and what a test found. A row is hidden
// while it has nothing to say. The controls are the page's.

#include <string>
#include <vector>

#include "core/reach_verdict.h"
#include "core/service.h"

class wxButton;
class wxSizer;
class wxStaticText;
class wxWindow;

namespace ui {

class ServiceCommands;

class ReachRows {
 public:
  /// All must outlive this object.
  ReachRows(wxWindow& page, core::ServiceKind service, ServiceCommands& commands);
  ReachRows(const ReachRows&) = delete;
  ReachRows& operator=(const ReachRows&) = delete;

  /// To be added to the page once.
  wxSizer* MakeRows();

  /// Shows the ports, with a button that opens the options there. Empty hides both.
  void SetPorts(const std::string& text);

  /// Shows that a changed port needs a restart, with a button that restarts. Empty hides both.
  void SetRestartNote(const std::string& text);

  /// Shows the addresses at which other computers reach the service, the likeliest first, or that
  /// there is none.
  void SetAddresses(const std::vector<std::string>& addresses, bool isRunning);

  /// Shows how the Web server answers, with a button that opens the options there, and whether
  /// browsers show that on its port. If not, another button mends it.
  void SetAnswers(bool withHttp, bool areShownByBrowsers);

  /// Shows what a test found, or that it is under way. An empty text hides it.
  void SetTest(const core::ReachVerdict& verdict);

 private:
  wxSizer* MakePorts();
  wxSizer* MakeRestart();
  wxSizer* MakeAnswers();
  wxSizer* MakePortNote();
  wxSizer* MakeAddresses();
  wxSizer* MakeTest();
  void ShowFact(wxStaticText& fact, const std::string& text, wxWindow& companion);

  wxWindow& page_;
  const core::ServiceKind service_;
  ServiceCommands& commands_;
  std::vector<std::string> addresses_;
  std::string testCommand_;
  wxStaticText* portsHeading_;
  wxStaticText* ports_;
  wxButton* changePort_;
  wxStaticText* restartNote_;
  wxButton* restart_;
  wxStaticText* addressHeading_;
  wxStaticText* address_;
  wxButton* copy_;
  wxButton* showQrCode_;
  wxStaticText* answersHeading_;
  wxStaticText* answers_;
  wxButton* chooseAnswers_;
  wxStaticText* portNote_;
  wxButton* forBrowsers_;
  wxStaticText* test_;
  wxButton* copyCommand_;
};

}  // namespace ui
