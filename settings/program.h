#pragma once

// What the parts of the running program share: its directory, its name, its error log, and the
// objects that hold its settings in memory. Settings stores are addressed by the directory or name.

#include <memory>
#include <string>
#include <string_view>

#include "files/logs.h"
#include "settings/holders.h"
#include "text/path_text.h"

namespace settings {

struct Program {
  /// `directory`: a path text without a trailing backslash; `executable`: the executable's base
  /// name; `installedIn`: the executable's directory, if the program is an installed one.
  Program(std::string_view programDirectory, std::string_view executableName,
          std::string_view installedIn = {})
      : directory(programDirectory),
        executable(executableName),
        errors(programDirectory),
        installedIn_(installedIn) {}

  /// The path of a file or folder of the program directory.
  std::string File(std::string_view name) const {
    return ModCommon::AddSlash(directory) + std::string(name);
  }

  /// The path of the executable on Windows: its base name and ".exe" in the directory that it is
  /// installed in, else in the program directory.
  std::string ExecutableFile() const {
    return ModCommon::AddSlash(installedIn_.empty() ? directory : installedIn_) + executable +
           ".exe";
  }

  SettingsHolders& Holders() const { return *holders_; }

  const std::string directory;
  const std::string executable;
  const files::ErrorLog errors;

 private:
  const std::string installedIn_;
  const std::unique_ptr<SettingsHolders> holders_ = std::make_unique<SettingsHolders>();
};

}  // namespace settings
