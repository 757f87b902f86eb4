// A test's hand and eye on the windows of another program. Reads a wish per line, its words divided
// by tabs, and answers each with a line, which is empty if the wish cannot be fulfilled. Every wish
// begins with a verb and the class and caption of a top-level window; an empty caption is any.
//
//   look CLASS CAPTION                         all texts of the window, if it can be seen
//   place CLASS CAPTION TEXT                   where on the screen the control of that text is
//   press CLASS CAPTION TEXT                   presses the button of that text
//   read CLASS CAPTION LABEL                   what the field behind that label holds
//   fill CLASS CAPTION LABEL NEW               puts another text into it
//   icon CLASS CAPTION                         whether the window, shown or hidden, has a tray icon
//   post CLASS CAPTION MESSAGE FIRST SECOND    a message by number, to a hidden window as well
//
// It knows no more of the other program than what the system tells everyone.

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kLongestText = 1000;
constexpr UINT kPatience = 5000;  // milliseconds for a window to answer

std::wstring Wide(const std::string& text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size)));
  return wide;
}

std::string Narrow(const std::wstring& text) {
  const int size = static_cast<int>(text.size());
  std::string narrow(text.size() * 3, '\0');
  narrow.resize(static_cast<std::size_t>(WideCharToMultiByte(
      CP_UTF8, 0, text.data(), size, narrow.data(), size * 3, nullptr, nullptr)));
  return narrow;
}

DWORD_PTR Ask(HWND window, UINT message, WPARAM first, LPARAM second) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, message, first, second, SMTO_ABORTIFHUNG, kPatience, &answer);
  return answer;
}

// On one line and without marks of mnemonics.
std::string OnOneLine(std::wstring text) {
  std::erase(text, L'&');
  for (wchar_t& character : text) {
    if (character < L' ') character = L' ';
  }
  return Narrow(text);
}

// The caption that the system keeps, which costs the other program nothing. Not a field's content.
std::string TextOf(HWND window) {
  std::wstring text(kLongestText, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), kLongestText)));
  return OnOneLine(std::move(text));
}

std::string ContentOf(HWND field) {
  std::wstring text(Ask(field, WM_GETTEXTLENGTH, 0, 0) + 1, L'\0');
  text.resize(Ask(field, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data())));
  return OnOneLine(std::move(text));
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

HWND FindControl(HWND window, const std::string& text) {
  for (HWND control : ControlsOf(window)) {
    if (TextOf(control) == text) return control;
  }
  return nullptr;
}

HWND FieldBehind(HWND window, const std::string& label) {
  HWND found = FindControl(window, label);
  return found == nullptr ? nullptr : GetWindow(found, GW_HWNDNEXT);
}

HWND FindTop(const std::wstring& windowClass, const std::wstring& caption, bool seen) {
  HWND window = nullptr;
  const wchar_t* text = caption.empty() ? nullptr : caption.c_str();
  while ((window = FindWindowExW(nullptr, window, windowClass.c_str(), text)) != nullptr) {
    if (!seen || (IsWindowVisible(window) != 0 && IsIconic(window) == 0)) return window;
  }
  return nullptr;
}

std::string Look(HWND window) {
  std::string texts = TextOf(window) + "\t";
  for (HWND control : ControlsOf(window)) texts += TextOf(control) + "\t";
  return texts;
}

std::string Place(HWND control) {
  RECT place = {};
  GetWindowRect(control, &place);
  return std::to_string((place.left + place.right) / 2) + "\t" +
         std::to_string((place.top + place.bottom) / 2);
}

std::string Post(HWND window, UINT message, WPARAM first, LPARAM second) {
  return PostMessageW(window, message, first, second) != 0 ? "posted" : "";
}

// Changes nothing of the icon, which succeeds only if there is one.
std::string Icon(HWND window) {
  NOTIFYICONDATAW data = {};
  data.cbSize = sizeof(data);
  data.hWnd = window;
  return Shell_NotifyIconW(NIM_MODIFY, &data) != 0 ? "there" : "";
}

std::string Fulfil(const std::vector<std::string>& words) {
  const auto number = [&](std::size_t i) { return std::stoul(words.at(i), nullptr, 0); };
  const std::string& verb = words.at(0);
  HWND window = FindTop(Wide(words.at(1)), Wide(words.at(2)), verb != "post" && verb != "icon");
  if (window == nullptr) return "";
  if (verb == "look") return Look(window);
  if (verb == "icon") return Icon(window);
  if (verb == "post") {
    return Post(window, number(3), number(4), static_cast<LPARAM>(number(5)));
  }
  const bool isField = verb == "read" || verb == "fill";
  HWND control = isField ? FieldBehind(window, words.at(3)) : FindControl(window, words.at(3));
  if (control == nullptr || IsWindowEnabled(window) == 0 || IsWindowEnabled(control) == 0)
    return "";
  if (verb == "place") return Place(control);
  if (verb == "press") return Post(control, BM_CLICK, 0, 0);
  if (verb == "fill") {
    const std::wstring text = Wide(words.at(4));
    Ask(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
  }
  return ContentOf(control) + "\t";
}

}  // namespace

int main() {
  std::string line;
  while (std::getline(std::cin, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    std::vector<std::string> words;
    for (std::size_t at = 0; at <= line.size();) {
      const std::size_t end = std::min(line.find('\t', at), line.size());
      words.push_back(line.substr(at, end - at));
      at = end + 1;
    }
    std::cout << Fulfil(words) << std::endl;
  }
  return 0;
}
