// find_window CLASS CAPTION: tells the ANSI code page, and then for each top-level window of that
// class and caption whether it is shown.

#include <windows.h>

#include <cstdio>

int main(int argumentCount, char** arguments) {
  if (argumentCount < 3) return 1;
  std::printf("%u\n", GetACP());
  HWND window = nullptr;
  while ((window = FindWindowExA(nullptr, window, arguments[1], arguments[2])) != nullptr) {
    std::puts(IsWindowVisible(window) != 0 ? "shown" : "hidden");
  }
  return 0;
}
