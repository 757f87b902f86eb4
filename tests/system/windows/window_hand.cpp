// A test's hand and eye on the windows of another program, of which it knows no more than what the
// system tells everyone. Reads a request per line, its words divided by tabs, and answers each with
// a line, which is empty if it cannot be done. Every request begins with a verb and the class and
// caption of a top-level window; an empty caption is any.
//
//   look CLASS CAPTION                         all texts of the window, if it can be seen
//   place CLASS CAPTION TEXT                   where on the screen the control of that text is
//   press CLASS CAPTION TEXT                   presses the button of that text
//   fill CLASS CAPTION LABEL NEW               puts another text into the field behind that label
//   icon CLASS CAPTION                         whether the window, shown or hidden, has a tray icon
//   post CLASS CAPTION MESSAGE FIRST SECOND    a message by number, to a hidden window as well

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int kLongestText = 1000;
constexpr UINT kPatience = 5000;  // milliseconds for a window to answer
constexpr std::size_t kMostWords = 6;

std::wstring Wide(const std::string& text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}

// On one line and without marks of mnemonics. It is the caption that the system keeps, which costs
// the other program nothing, and never a field's content.
std::string TextOf(HWND window) {
  std::wstring text(kLongestText, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), kLongestText)));
  std::erase(text, L'&');
  std::replace_if(
      text.begin(), text.end(), [](wchar_t character) { return character < L' '; }, L' ');
  const std::u8string narrow = std::filesystem::path(text).u8string();
  return {narrow.begin(), narrow.end()};
}

BOOL CALLBACK AddIfSeen(HWND window, LPARAM list) {
  if (IsWindowVisible(window) != 0) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

std::vector<HWND> ControlsOf(HWND window) {
  std::vector<HWND> controls;
  EnumChildWindows(window, &AddIfSeen, reinterpret_cast<LPARAM>(&controls));
  return controls;
}

HWND FindTop(const std::wstring& windowClass, const std::wstring& caption, bool seen) {
  HWND window = nullptr;
  const wchar_t* text = caption.empty() ? nullptr : caption.c_str();
  while ((window = FindWindowExW(nullptr, window, windowClass.c_str(), text)) != nullptr) {
    if (!seen || (IsWindowVisible(window) != 0 && IsIconic(window) == 0)) break;
  }
  return window;
}

std::string Look(HWND window) {
  std::string texts = TextOf(window) + "\t";
  for (HWND control : ControlsOf(window)) texts += TextOf(control) + "\t";
  return texts;
}

// Changes nothing of the icon, which succeeds only if there is one.
bool HasIcon(HWND window) {
  NOTIFYICONDATAW data = {};
  data.cbSize = sizeof(data);
  data.hWnd = window;
  return Shell_NotifyIconW(NIM_MODIFY, &data) != 0;
}

bool Fill(HWND field, const std::wstring& text) {
  return SendMessageTimeoutW(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()),
                             SMTO_ABORTIFHUNG, kPatience, nullptr) != 0;
}

std::string Place(HWND control) {
  RECT place = {};
  GetWindowRect(control, &place);
  return std::to_string((place.left + place.right) / 2) + "\t" +
         std::to_string((place.top + place.bottom) / 2);
}

HWND FindControl(HWND window, const std::string& text) {
  for (HWND control : ControlsOf(window)) {
    if (TextOf(control) == text) return control;
  }
  return nullptr;
}

bool Act(HWND window, const std::vector<std::string>& words) {
  const std::string& verb = words[0];
  if (verb == "icon") return HasIcon(window);
  if (verb == "post") {
    const auto number = [&](std::size_t i) { return std::stoul(words[i], nullptr, 0); };
    return PostMessageW(window, number(3), number(4), static_cast<LPARAM>(number(5))) != 0;
  }
  HWND control = FindControl(window, words[3]);
  if (verb == "fill") control = GetWindow(control, GW_HWNDNEXT);
  if (IsWindowEnabled(window) == 0 || IsWindowEnabled(control) == 0) return false;
  if (verb == "fill") return Fill(control, Wide(words[4]));
  return PostMessageW(control, BM_CLICK, 0, 0) != 0;
}

std::string Answer(const std::vector<std::string>& words) {
  const std::string& verb = words[0];
  HWND window = FindTop(Wide(words[1]), Wide(words[2]), verb != "post" && verb != "icon");
  if (window == nullptr) return "";
  if (verb == "look") return Look(window);
  if (verb == "place") return Place(FindControl(window, words[3]));
  return Act(window, words) ? "done" : "";
}

}  // namespace

int main() {
  for (std::string line; std::getline(std::cin, line);) {
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; std::getline(stream, word, '\t');) words.push_back(word);
    words.resize(kMostWords);
    std::cout << Answer(words) << std::endl;
  }
  return 0;
}
