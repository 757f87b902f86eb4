#include "mail/part_copy.h"

namespace ModMail {

PartCopy::PartCopy(platform::File& source, const MimePart& part, const std::string& path)
    : path_(path), part_(source, part), file_(path, ".tarnwerk-part") {}

bool PartCopy::Step() {
  std::string decoded;
  std::error_code error;
  const bool goesOn = part_.Next(decoded, error);
  file_.Write(decoded);
  if (error || !file_.IsGood()) return false;
  if (!goesOn) isDone_ = file_.PutInPlace();
  return goesOn;
}

}  // namespace ModMail
