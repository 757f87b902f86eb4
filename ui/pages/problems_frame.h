#pragma once

// The page that shows what went wrong: the last lines of RunErr.Log, newest first, explained
// (core/problem_text.h). It only reads the log, which the program never truncates.

#include <cstdint>
#include <functional>
#include <string>

#include "ui/controls/page.h"

class wxStaticText;
class wxTextCtrl;

namespace ui {

class ProblemList;

inline constexpr const char* kProblemsTitle = "出了什么问题";

class ProblemsFrame : public Page {
 public:
  ProblemsFrame(wxWindow* parent, const std::function<void()>& openLog);

  /// A path text. Must be called before the page is shown.
  void SetLog(std::string log) { log_ = std::move(log); }

  /// Reads the log if its size has changed. Returns the size up to which it is shown.
  std::uint64_t ReadLog();

  ProblemList* lstProblems;
  wxTextCtrl* txtProblem;  // the selected line, explained and as it was logged

 private:
  wxSizer* MakeHeader();
  void ShowSelected();

  std::string log_;
  std::uint64_t shownSize_ = 0;
  wxStaticText* note_;
};

}  // namespace ui
