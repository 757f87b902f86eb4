#pragma once

// Writes the decoded content of a part to a file, in pieces, whole or not at all.

#include <string>
#include <system_error>

#include "mail/part_decoder.h"
#include "mail/whole_file.h"

namespace ModMail {

class PartCopy {
 public:
  /// `source` as for PartReader. `path`: the path text of the file, which is replaced if it exists.
  PartCopy(platform::File& source, const MimePart& part, const std::string& path);

  /// Does the next piece of work. False once there is none.
  bool Step();

  /// Whether the file is in its place, once Step returned false.
  bool IsDone() const { return isDone_; }

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
  PartReader part_;
  WholeFile file_;
  bool isDone_ = false;
};

}  // namespace ModMail
