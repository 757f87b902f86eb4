#pragma once

// Which files and folders clients may change: those in the upload directory. Usually this compares
// texts (IsInsideUploadDir). Where clients are confined, it compares the places that the paths lead
// to, an upload directory that is not set lets nothing pass, and nothing gets where the Web
// server's programs are run from.

#include <string>

#include "core/protection.h"
#include "files/client_files.h"
#include "ftp/ftp_options.h"

namespace ModFtp {

class UploadRule {
 public:
  /// All arguments must outlive this object.
  UploadRule(const FtpOptions& options, const files::ClientFiles& files,
             const core::Protection& protection)
      : options_(options), files_(files), protection_(protection) {}

  /// `path`: of an entry that may be missing.
  bool MayChange(const std::string& path) const;

  /// Whether `from`, which RNFR may have refused, can be moved. Usually anything can.
  bool MayMove(const std::string& from) const;

 private:
  bool IsPlaceOpen(const std::filesystem::path& place) const;

  const FtpOptions& options_;
  const files::ClientFiles& files_;
  const core::Protection& protection_;
};

}  // namespace ModFtp
