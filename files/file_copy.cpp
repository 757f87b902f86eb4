#include "files/file_copy.h"

#include "platform/entry.h"
#include "platform/native_path.h"

namespace files {
namespace {

namespace fs = std::filesystem;
using platform::File;

constexpr int kMostNames = 1000;  // some may be left of crashes

}  // namespace

FileCopy::FileCopy(const std::string& from, const std::string& to, Failure& failure)
    : source_(platform::NativePath(from)), place_(platform::NativePath(to)) {
  from_ = File::Open(source_, File::Mode::kRead, failure.error);
  if (failure) return;
  failure.side = Side::kTarget;
  OpenTarget(failure.error);
}

FileCopy::~FileCopy() {
  if (growing_.empty()) return;
  to_.Close();
  std::error_code ignored;
  platform::RemoveEntry(growing_, ignored);
}

// Names that begin with a dot are hidden on Linux; on Windows the attribute hides it.
void FileCopy::OpenTarget(std::error_code& error) {
  for (int i = 0; i < kMostNames; ++i) {
    const fs::path growing = place_.parent_path() / (".tarnwerk-copy-" + std::to_string(i));
    to_ = File::Open(growing, File::Mode::kCreatePrivate, error);
    if (error == std::errc::file_exists) continue;
    if (error) return;
    growing_ = growing;
    platform::SetHidden(growing_, true);
    return;
  }
}

std::size_t FileCopy::CopyPiece(std::string& buffer, Failure& failure) {
  failure = {};
  const std::size_t count = from_.Read(buffer.data(), buffer.size(), failure.error);
  if (failure) return 0;
  to_.Write(std::string_view(buffer).substr(0, count), failure.error);
  failure.side = Side::kTarget;
  failure.isFinal = static_cast<bool>(failure);
  copied_ += count;
  whole_ = count < buffer.size() || copied_ >= from_.SizeWhenOpened();
  return count;
}

void FileCopy::Finish(bool replace, Failure& failure) {
  failure = {{}, Side::kTarget};
  to_.Close();
  TakeOverLooks();
  if (replace) {
    platform::ReplaceEntry(growing_, place_, failure.error);
  } else {
    platform::MoveEntry(growing_, place_, failure.error);
  }
  if (!failure) growing_.clear();
}

// As far as possible.
void FileCopy::TakeOverLooks() {
  std::error_code ignored;
  const fs::perms rights = fs::status(source_, ignored).permissions();
  fs::permissions(growing_,
                  (rights & (fs::perms::owner_all | fs::perms::group_all | fs::perms::others_all)) |
                      fs::perms::owner_read | fs::perms::owner_write,
                  ignored);
  const fs::file_time_type written = fs::last_write_time(source_, ignored);
  if (!ignored) fs::last_write_time(growing_, written, ignored);
  platform::SetHidden(growing_, false);
}

}  // namespace files
