#pragma once

// How the Web server answers, as rows of its options: whether so that every browser shows the
// pages, how long a form may then be, and how fast files go out (web/answer_options.h). Notes below
// the numbers say what becomes of them.

#include <optional>

#include "ui/controls/layout.h"
#include "web/answer_options.h"

namespace ui {

class AnswerFields {
 public:
  /// Adds the rows; `parent` is that of the others.
  AnswerFields(wxWindow* parent, FieldRows& rows);
  AnswerFields(const AnswerFields&) = delete;
  AnswerFields& operator=(const AnswerFields&) = delete;

  void Show(const ModWeb::AnswerOptions& options);

  /// None if a number cannot be used; a box has then said so, and its field has the focus.
  /// `former`: what is kept where a field is grey.
  std::optional<ModWeb::AnswerOptions> Entered(const ModWeb::AnswerOptions& former) const;

  wxCheckBox* chkAnswersHttp;
  wxTextCtrl* txtBodyLimit;  // in MiB; grey without chkAnswersHttp
  wxTextCtrl* txtSpeed;      // in KiB a second; empty: as usual, 0: no limit

 private:
  void EnableParts();
};

}  // namespace ui
