#include "platform/system_message.h"

#include <winsock2.h>

#include <windows.h>

#include <algorithm>
#include <asio/error.hpp>
#include <iterator>

#include "platform/windows/wide_text.h"

namespace platform {
namespace {

// What users can do something about; Wine has no messages for the errors of sockets.
struct SocketMessage {
  int error;
  const char* text;
};
constexpr SocketMessage kSocketMessages[] = {
    {WSAEACCES, "Permission denied"},
    {WSAEADDRINUSE, "Address already in use"},
    {WSAEADDRNOTAVAIL, "Cannot assign requested address"},
    {WSAECONNRESET, "Connection reset by peer"},
};

std::string MessageOfSystem(int error) {
  wchar_t* buffer = nullptr;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
      nullptr, static_cast<DWORD>(error), 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
  std::wstring text(buffer == nullptr ? L"" : buffer, length);
  LocalFree(buffer);
  // The system's messages end in a line break.
  while (!text.empty() && text.back() <= L' ') text.pop_back();
  return NarrowText(text);
}

std::string OwnMessage(int error) {
  const auto* found =
      std::find_if(std::begin(kSocketMessages), std::end(kSocketMessages),
                   [error](const SocketMessage& each) { return each.error == error; });
  return found == std::end(kSocketMessages) ? "error " + std::to_string(error) : found->text;
}

}  // namespace

std::string SystemMessage(const std::error_code& error) {
  // Sockets have a category of their own for the same numbers.
  if (error.category() != std::system_category() &&
      error.category() != asio::error::get_system_category()) {
    return error.message();
  }
  const std::string text = MessageOfSystem(error.value());
  return text.empty() ? OwnMessage(error.value()) : text;
}

}  // namespace platform
