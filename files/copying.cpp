#include "files/copying.h"

#include <chrono>
#include <utility>

#include "platform/native_path.h"

namespace files {
namespace {

namespace fs = std::filesystem;
using Kind = TreeWalk::Kind;
using platform::NativePath;

constexpr std::chrono::milliseconds kTurn{3};
constexpr std::size_t kPieceBytes = std::size_t{256} * 1024;
constexpr std::size_t kMostProblems = 20;

enum class Occupant { kNone, kFolder, kOther };

// A link that leads nowhere counts. What cannot be looked at does not: creating it will fail.
Occupant OccupantOf(const fs::path& path) {
  std::error_code ignored;
  if (!fs::exists(fs::symlink_status(path, ignored))) return Occupant::kNone;
  return fs::is_directory(path, ignored) ? Occupant::kFolder : Occupant::kOther;
}

bool AreSame(const fs::path& first, const fs::path& second) {
  std::error_code ignored;
  return fs::equivalent(first, second, ignored);
}

std::string WithoutSlash(std::string path) {
  while (path.ends_with('\\')) path.pop_back();
  return path;
}

// The file or folder that the user chose, which the entry is, or is in.
std::string ChosenAbove(const TreeWalk::Item& item) {
  const std::size_t nameBegin = item.path.size() - item.name.size();
  return item.path.substr(0, item.path.find('\\', nameBegin));
}

}  // namespace

void Copying::Report::Add(const Report& later) {
  copied += later.copied;
  skipped += later.skipped;
  left += later.left;
  problems.insert(problems.end(), later.problems.begin(), later.problems.end());
  if (problems.size() > kMostProblems) problems.resize(kMostProblems);
  cancelled = later.cancelled;
  stopped = later.stopped;
}

Copying::Copying(std::vector<std::string> chosen, const std::string& target)
    : chosen_(std::move(chosen)),
      target_(WithoutSlash(platform::PathText(platform::ExistingPath(target))) + "\\"),
      counting_(chosen_),
      walk_(chosen_),
      buffer_(kPieceBytes, '\0') {}

Copying::State Copying::Step() {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point begin = Clock::now();
  while (state_ == State::kWorks && Clock::now() - begin < kTurn) Advance();
  return state_;
}

void Copying::Advance() {
  if (!progress_.isCounted) return Count();
  if (copy_) return CopyMore();
  BeginNext();
}

void Copying::Count() {
  const std::optional<TreeWalk::Item> item = counting_.Next();
  progress_.isCounted = !item;
  if (!item) return;
  if (item->kind == Kind::kFolder && !IsAccepted(*item)) return counting_.LeaveOut();
  if (item->kind != Kind::kFile) return;
  ++progress_.files;
  progress_.allBytes += item->size;
}

void Copying::BeginNext() {
  const std::optional<TreeWalk::Item> item = walk_.Next();
  if (!item) {
    state_ = State::kEnded;
    return;
  }
  LeaveFolders(item->name);
  switch (item->kind) {
    case Kind::kFile:
      return BeginFile(*item);
    case Kind::kFolder:
      return BeginFolder(*item);
    case Kind::kUnreadable:
      return Note(item->name, Why::kUnreadable, item->error);
    case Kind::kLink:
      return Note(item->name, Why::kLink);
    case Kind::kTooDeep:
      return Note(item->name, Why::kTooDeep);
  }
}

// A folder is copied neither into itself, which would never end, nor onto itself.
bool Copying::IsAccepted(const TreeWalk::Item& item) const {
  return !IsAtOrIn(PlaceOf(item), ChosenAbove(item));
}

void Copying::BeginFolder(const TreeWalk::Item& item) {
  const fs::path place = NativePath(PlaceOf(item));
  const Occupant occupant = OccupantOf(place);
  std::error_code error;
  if (!IsAccepted(item)) {
    Note(item.name, AreSame(NativePath(item.path), place) ? Why::kOntoItself : Why::kIntoItself);
  } else if (occupant == Occupant::kFolder) {
    return;
  } else if (occupant == Occupant::kOther) {
    Note(item.name, Why::kOccupied);
  } else if (fs::create_directory(place, error); error) {
    Note(item.name, Why::kUnwritable, error);
  } else {
    return made_.push_back(item.name);
  }
  walk_.LeaveOut();
}

void Copying::BeginFile(const TreeWalk::Item& item) {
  item_ = item;
  progress_.path = item.name;
  ++progress_.file;
  bytesBefore_ = progress_.bytes;
  replaces_ = false;
  const fs::path place = NativePath(PlaceOf(item));
  const Occupant occupant = OccupantOf(place);
  if (occupant == Occupant::kNone) return StartCopy();
  if (occupant == Occupant::kFolder || AreSame(NativePath(item.path), place)) {
    Note(item.name, occupant == Occupant::kFolder ? Why::kOccupied : Why::kOntoItself);
    return EndFile();
  }
  state_ = State::kAsks;
  if (forAll_) Decide(*forAll_);
}

void Copying::Decide(const Decision& decision) {
  if (state_ != State::kAsks) return;
  state_ = State::kWorks;
  if (decision.forAll) forAll_ = decision;
  replaces_ = decision.replace;
  if (replaces_) return StartCopy();
  ++report_.skipped;
  EndFile();
}

void Copying::StartCopy() {
  FileCopy::Failure failure;
  copy_ = std::make_unique<FileCopy>(item_.path, PlaceOf(item_), failure);
  if (failure) NoteFailure(failure);
}

void Copying::CopyMore() {
  FileCopy::Failure failure;
  progress_.bytes += copy_->CopyPiece(buffer_, failure);
  if (!failure && copy_->IsWhole()) {
    copy_->Finish(replaces_, failure);
    if (!failure) {
      ++report_.copied;
      return EndFile();
    }
  }
  if (failure) NoteFailure(failure);
}

void Copying::NoteFailure(const FileCopy::Failure& failure) {
  const bool atSource = failure.side == FileCopy::Side::kSource;
  Note(item_.name, atSource ? Why::kUnreadable : Why::kUnwritable, failure.error);
  EndFile();
  report_.stopped = failure.isFinal;
  if (failure.isFinal) Cancel();
}

// The totals are as counted, even if the file is another one by now.
void Copying::EndFile() {
  copy_.reset();
  progress_.bytes = bytesBefore_ + item_.size;
}

void Copying::Cancel() {
  if (state_ == State::kEnded) return;
  state_ = State::kEnded;
  report_.cancelled = !report_.stopped;
  copy_.reset();
  LeaveFolders("");
}

// Forgets the folders that `name` is not in. Those that were not filled are removed.
void Copying::LeaveFolders(const std::string& name) {
  while (!made_.empty() && !name.starts_with(made_.back() + "\\")) {
    std::error_code notEmpty;
    if (state_ == State::kEnded) fs::remove(NativePath(target_ + made_.back()), notEmpty);
    made_.pop_back();
  }
}

void Copying::Note(const std::string& name, Why why, std::error_code error) {
  ++report_.left;
  if (report_.problems.size() < kMostProblems) report_.problems.push_back({name, why, error});
}

std::string Copying::PlaceOf(const TreeWalk::Item& item) const { return target_ + item.name; }

}  // namespace files
