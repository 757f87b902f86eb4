#pragma once

#include <asio/io_context.hpp>
#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>

#include "platform/process.h"

namespace test {

/// Makes a symbolic link to a relative path with "/"; false if there are none here. Where the C++
/// library makes none (on Windows) the tool of the system below Wine does.
inline bool MakeLink(const std::string& target, const std::filesystem::path& link) {
  std::error_code error;
  std::filesystem::create_symlink(target, link, error);
  if (!error) return true;
  const std::filesystem::path former = std::filesystem::current_path();
  std::filesystem::current_path(link.parent_path());
  asio::io_context loop;
  const auto tool = platform::StartProgram(
      loop.get_executor(), "Z:\\bin\\ln", {"-s", target, link.filename()}, " ", [] {}, error);
  if (tool) tool->EndWithin(std::chrono::seconds(10));
  std::filesystem::current_path(former);
  return !error;
}

}  // namespace test
