#pragma once

// What the FTP server is compared with. Each serves the folder "ftproot" to guests, who may upload
// into its folder "upload"; vsftpd and pure-ftpd must be started by root.

#include "bench/server.h"

namespace bench {

/// Two processes per session.
class Vsftpd : public Server {
 public:
  static constexpr const char* kName = "vsftpd";
  static bool IsInstalled() { return HasProgram("vsftpd"); }

  explicit Vsftpd(const Folder& folder);
};

/// A process per session.
class PureFtpd : public Server {
 public:
  static constexpr const char* kName = "pure-ftpd";
  static bool IsInstalled() { return HasProgram("pure-ftpd") && HasProgram("pure-pw"); }

  explicit PureFtpd(const Folder& folder);
};

/// One thread, in Python.
class Pyftpdlib : public Server {
 public:
  static constexpr const char* kName = "pyftpdlib";
  static bool IsInstalled() { return HasPythonModule("pyftpdlib"); }

  explicit Pyftpdlib(const Folder& folder);
};

/// Creates "ftproot/upload", where everybody may write.
void CreateUploadFolder(const Folder& folder);

}  // namespace bench
