#include "mail/whole_file.h"

#include "platform/entry.h"
#include "platform/native_path.h"

namespace ModMail {

namespace fs = std::filesystem;
using platform::File;

WholeFile::WholeFile(std::string_view path, std::string_view unfinishedName)
    : target_(platform::ExistingPath(path)),
      unfinished_(target_.parent_path() / fs::path(unfinishedName)) {
  // A killed program may have left one, and a link must not be followed.
  std::error_code ignored;
  platform::RemoveEntry(unfinished_, ignored);
  file_ = File::Open(unfinished_, File::Mode::kReplace, error_);
}

WholeFile::~WholeFile() {
  if (!file_.IsOpen()) return;
  file_.Close();
  std::error_code ignored;
  platform::RemoveEntry(unfinished_, ignored);
}

void WholeFile::Write(std::string_view bytes) {
  if (!error_) file_.Write(bytes, error_);
  unflushed_ += bytes.size();
}

files::PendingFlush WholeFile::OpenFlush() {
  unflushed_ = 0;
  std::error_code ignored;
  return {platform::PathText(unfinished_), ignored};
}

bool WholeFile::PutInPlace() {
  if (error_) return false;
  file_.Close();
  platform::ReplaceEntry(unfinished_, target_, error_);
  std::error_code ignored;
  if (error_) platform::RemoveEntry(unfinished_, ignored);
  return !error_;
}

WholeAppendix::WholeAppendix(std::string_view path) : path_(platform::ExistingPath(path)) {
  std::error_code isMissing;
  const std::uintmax_t size = fs::file_size(path_, isMissing);
  formerSize_ = isMissing ? 0 : size;
  file_ = File::Open(path_, File::Mode::kAppend, error_);
}

WholeAppendix::~WholeAppendix() {
  if (!file_.IsOpen() || isKept_) return;
  file_.Close();
  // It may have been emptied meanwhile.
  std::error_code error;
  const std::uintmax_t size = fs::file_size(path_, error);
  if (!error && size > formerSize_) fs::resize_file(path_, formerSize_, error);
}

void WholeAppendix::Write(std::string_view bytes) {
  if (!error_) file_.Write(bytes, error_);
}

}  // namespace ModMail
