#pragma once

#include <asio/io_context.hpp>
#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>

#include "platform/process.h"

namespace test {

/// Makes a symbolic link to a relative path with "/"; false if there are none here. Where the C++
/// library makes none (on Windows) the shell of the system below Wine does. Nobody is told when its
/// programs end, and a link that leads nowhere is not seen: so the shell makes a file as well.
inline bool MakeLink(const std::string& target, const std::filesystem::path& link) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::create_symlink(target, link, error);
  if (!error) return true;
  const fs::path former = fs::current_path();
  fs::current_path(link.parent_path());
  const std::string name = link.filename().string();
  asio::io_context loop;
  const auto shell = platform::StartProgram(
      loop.get_executor(), "Z:\\bin\\sh",
      {"-c", "\"ln -s '" + target + "' '" + name + "' && : > made\""}, " ", [] {}, error);
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (shell && !fs::exists("made") && std::chrono::steady_clock::now() < end) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  const bool made = fs::remove("made", error);
  fs::current_path(former);
  return made;
}

}  // namespace test
