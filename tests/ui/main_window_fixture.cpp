#include "tests/ui/main_window_fixture.h"

#include <wx/app.h>
#include <wx/checkbox.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/hyperlink.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>
#include <wx/textdlg.h>
#include <wx/utils.h>

#include <sstream>
#include <stdexcept>
#include <vector>

#include "text/strings.h"

namespace test {

using ui::Typed;

namespace {

// "@" is the program directory.
constexpr const char* kSettings =
    "[WebServer Options]\nTCPPort=0\nDNS=home.test\nRead=1\nStartDefaultPage=1\nWebRootDir=@www\n"
    "[FtpServer Options]\nFtpPort=0\nDNS=home.test\nFtpServer Root=@ftp\n"
    "[MailServer Options]\nSMTP Port=0\nPOP3 Port=0\nDNS=home.test\nMailServer Root=@mail\n";

std::string Answered(wxMessageDialogBase& box) {
  const long style = box.GetMessageDialogStyle();
  std::string icons;
  if ((style & wxICON_WARNING) != 0) icons += "!";
  if ((style & wxICON_QUESTION) != 0) icons += "?";
  if ((style & wxICON_INFORMATION) != 0) icons += "i";
  return icons + Typed(box.GetTitle() + ": " + box.GetMessage()) +
         ((style & wxYES_NO) == wxYES_NO ? " [y/n]" : "");
}

std::string Answered(wxTextEntryDialog& box, const wxString& input) {
  wxString prompt;  // a line of text in the box; the first one is
  for (wxWindow* child : box.GetChildren()) {
    if (prompt.empty()) prompt = child->GetLabel();
  }
  const wxString proposed = box.GetValue();
  box.SetValue(input);
  return Typed(box.GetTitle() + ": " + prompt + " [" + proposed + "]");
}

std::string Answered(wxDirDialog& box, const wxString& input) {
  const wxString proposed = box.GetPath();
  box.wxDirDialogBase::SetPath(input);  // the system's own chooser would only propose it
  return Typed(box.GetMessage() + ": [" + proposed + "]");
}

std::string Answered(wxFileDialog& box, const wxString& input) {
  EXPECT_TRUE(box.HasFlag(wxFD_SAVE) ? box.HasFlag(wxFD_OVERWRITE_PROMPT)
                                     : box.HasFlag(wxFD_FILE_MUST_EXIST));
  const auto path = [&box] {
    wxArrayString paths;
    if (box.HasFlag(wxFD_MULTIPLE)) box.GetPaths(paths);
    if (box.HasFlag(wxFD_MULTIPLE)) return paths.empty() ? wxString() : paths[0];
    return box.GetPath();
  };
  const wxString proposed = box.HasFlag(wxFD_SAVE) ? box.GetFilename() : wxString();
  box.SetPath(input);
  // The system's own chooser takes a path over only after having looked at its folder.
  EXPECT_TRUE(Until([&] { return path() == input; }));
  return Typed(box.GetMessage() + ": " + box.GetWildcard() + " [" + proposed + "]");
}

std::vector<std::pair<std::string, std::string>> Split(const std::string& fields) {
  std::vector<std::pair<std::string, std::string>> split;
  std::istringstream all(fields);
  for (std::string field; std::getline(all, field, '|');) {
    const std::size_t equals = field.find('=');
    split.emplace_back(field.substr(0, equals), field.substr(equals + 1));
  }
  return split;
}

void Send(wxWindow& control, wxEventType type) {
  wxCommandEvent event(type, control.GetId());
  event.SetEventObject(&control);
  control.ProcessWindowEvent(event);
}

void FillIn(wxWindow& control, const std::string& value) {
  if (auto* text = dynamic_cast<wxTextCtrl*>(&control)) return text->SetValue(ui::Shown(value));
  if (auto* box = dynamic_cast<wxCheckBox*>(&control)) {
    box->SetValue(value == "on");
    return Send(control, wxEVT_CHECKBOX);
  }
  dynamic_cast<wxRadioButton&>(control).SetValue(value == "on");
  Send(control, wxEVT_RADIOBUTTON);
}

std::string ContentOf(wxWindow& control) {
  if (!control.IsEnabled()) return "grey";
  if (auto* text = dynamic_cast<wxTextCtrl*>(&control)) return Typed(text->GetValue());
  auto* box = dynamic_cast<wxCheckBox*>(&control);
  const bool on = box ? box->GetValue() : dynamic_cast<wxRadioButton&>(control).GetValue();
  return on ? "on" : "off";
}

}  // namespace

bool Until(const std::function<bool()>& condition) {
  constexpr int kTries = 1000;
  for (int i = 0; i < kTries && !condition(); ++i) {
    wxTheApp->Yield();
    wxMilliSleep(10);
  }
  return condition();
}

int Boxes::Enter(wxDialog* dialog) {
  if (dialog == nullptr || dialog == drawn_)
    return wxID_NONE;  // the toolkit's boxes announce themselves twice
  const auto [button, input] = plan_.empty() ? Answer(wxID_CANCEL, "") : plan_.front();
  std::string line;
  if (auto* message = dynamic_cast<wxMessageDialogBase*>(dialog)) line = Answered(*message);
  if (auto* text = dynamic_cast<wxTextEntryDialog*>(dialog)) line = Answered(*text, input);
  if (auto* folder = dynamic_cast<wxDirDialog*>(dialog)) line = Answered(*folder, input);
  if (auto* file = dynamic_cast<wxFileDialog*>(dialog)) line = Answered(*file, input);
  const bool isForm = line.empty();
  if (isForm && script_) {
    dialog->CallAfter([dialog, script = std::exchange(script_, {})] { script(*dialog); });
    return wxID_NONE;
  }
  shown_ += (shown_.empty() ? "" : "\n") + (isForm ? Typed(dialog->GetTitle()) : line);
  if (isForm) return wxID_CANCEL;
  if (!plan_.empty()) plan_.pop_front();
  // Choosers are the system's own.
  if (dynamic_cast<wxDirDialog*>(dialog) || dynamic_cast<wxFileDialog*>(dialog)) return button;
  drawn_ = dialog;
  dialog->CallAfter([dialog, button = button] {
    EXPECT_TRUE(dialog->IsShown());
    dialog->EndModal(button);
  });
  return wxID_NONE;
}

MainWindow::MainWindow() {
  wxSetEnv("XDG_CONFIG_HOME", userState.Native().string());
  Home().Write("Server.ini", text::ReplaceAll(kSettings, "@", Home().Path("").string()));
  window = new ui::frmMain;
  web.LoadOptions();
  ftp.LoadOptions();
  mail.LoadOptions();
  control = std::make_unique<core::ServiceControl>(
      Program(), core::ServiceControl::Services{web, ftp, mail}, *window);
  window->Attach(
      {Program(), *control, web, ftp, mail, record, Environment().loop, Environment().protection},
      [this] { ++closed; });
}

MainWindow::~MainWindow() {
  window->Destroy();
  wxTheApp->ProcessIdle();  // windows are deleted when the toolkit is idle
}

wxWindow& MainWindow::Find(wxWindow& parent, const std::string& name) {
  const std::size_t slash = name.find('/');
  if (slash != name.npos) return Find(Find(parent, name.substr(0, slash)), name.substr(slash + 1));
  wxWindow* found = wxWindow::FindWindowByName(ui::Shown(name), &parent);
  if (found == nullptr) throw std::runtime_error("no window is named " + name);
  return *found;
}

std::string MainWindow::Label(const std::string& name) {
  return IsVisible(name) ? Typed(Find(name).GetLabel()) : "";
}

void MainWindow::Press(wxWindow& form, const std::string& button) {
  wxWindow& pressed = Find(form, button);
  EXPECT_TRUE(pressed.IsEnabled()) << button;
  if (dynamic_cast<wxGenericHyperlinkCtrl*>(&pressed) == nullptr)
    return Send(pressed, wxEVT_BUTTON);
  wxHyperlinkEvent event(&pressed, pressed.GetId(), "");
  pressed.ProcessWindowEvent(event);
}

void MainWindow::Click(const std::string& name) {
  wxMouseEvent event(wxEVT_LEFT_DOWN);
  event.SetEventObject(&Find(name));
  Find(name).ProcessWindowEvent(event);
}

void MainWindow::ChooseItem(ui::MenuItem item) {
  ASSERT_TRUE(HasItem(item));
  wxCommandEvent event(wxEVT_MENU, item);
  event.SetEventObject(window);
  window->ProcessWindowEvent(event);
}

void MainWindow::Fill(wxWindow& form, const std::string& fields) {
  for (const auto& [name, value] : Split(fields)) FillIn(Find(form, name), value);
}

std::string MainWindow::Contents(wxWindow& form, const std::string& fields) {
  std::string contents;
  for (const auto& [name, value] : Split(fields)) {
    contents += (contents.empty() ? "" : "|") + name + "=" + ContentOf(Find(form, name));
  }
  return contents;
}

void MainWindow::PressEnterIn(wxWindow& form, const std::string& field) {
  EXPECT_TRUE(Find(form, field).HasFlag(wxTE_PROCESS_ENTER)) << "goes to the default button";
  Send(Find(form, field), wxEVT_TEXT_ENTER);
}

std::string MainWindow::FocusedName() {
  const wxWindow* focus = wxWindow::FindFocus();
  return focus == nullptr ? "" : Typed(focus->GetName());
}

bool MainWindow::InForm(const std::string& opener, const std::function<void(wxDialog&)>& script) {
  bool opened = false;
  bool closedByScript = false;
  boxes.ScriptForm([&](wxDialog& form) {
    opened = true;
    script(form);
    closedByScript = !form.IsModal();
    if (!closedByScript) form.EndModal(wxID_CANCEL);
  });
  const bool isItem = opener == "mnuOptions" || opener == "mnuProtection";
  if (isItem) ChooseItem(opener == "mnuOptions" ? ui::mnuOptions : ui::mnuProtection);
  if (!isItem) Push(opener);
  EXPECT_TRUE(opened) << opener;
  return closedByScript;
}

bool MainWindow::Enter(const std::string& opener, const std::string& fields, int button) {
  return InForm(opener, [&](wxDialog& form) {
    Fill(form, fields);
    Send(*form.FindWindow(button), wxEVT_BUTTON);
    focused = FocusedName();
  });
}

void MainWindow::ExpectShown(const std::string& opener, const std::string& fields) {
  InForm(opener, [&](wxDialog& form) { EXPECT_EQ(Contents(form, fields), fields); });
}

}  // namespace test
