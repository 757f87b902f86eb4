#pragma once

// Questions that several windows ask: for a folder, and for a line of text.

#include <optional>
#include <string>
#include <vector>

class wxButton;
class wxTextCtrl;
class wxWindow;

namespace ui {

/// A folder in the user's own form, without blanks at its ends; none if the user cancelled. The
/// choice begins at `current`, likewise in the user's form, if there is such a folder.
std::optional<std::string> ChooseFolder(wxWindow* parent, const char* title,
                                        const std::string& current);

/// From now on `button` asks for a folder and puts it into `field`.
void LetChooseFolder(wxButton* button, wxTextCtrl* field, const char* title);

/// The filter of choosers that show everything. The toolkit's own has an English name.
inline constexpr const char* kAllFiles = "所有文件|*";

/// The path text of a file to write, which the user has agreed to replace if it exists; none if he
/// cancelled. `filter`: in the toolkit's form.
std::optional<std::string> AskFileToSave(wxWindow* parent, const char* title, const char* filter,
                                         const char* proposed);

/// The path texts of files to read; none if he cancelled.
std::vector<std::string> AskFilesToOpen(wxWindow* parent, const char* title);

/// What the user typed, as typed; none if he cancelled or left nothing in the field.
std::optional<std::string> AskText(wxWindow* parent, const char* prompt, const char* title,
                                   const std::string& proposed);

}  // namespace ui
