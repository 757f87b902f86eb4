#pragma once

// Copies files and folders, chosen by the user, into a folder: first counts them, then copies, all
// in turns of a few milliseconds. Folders that exist are added to; before a file is replaced, the
// user's answer is required. What cannot be read is reported and left out; a target that takes
// nothing more ends the copying. A file appears when it is whole (files/file_copy.h); those that
// have appeared stay when the copying is cancelled.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "files/file_copy.h"
#include "files/tree_walk.h"

namespace files {

class Copying {
 public:
  enum class State { kWorks, kAsks, kEnded };

  /// What to do about a file of the same name.
  struct Decision {
    bool replace;
    bool forAll;  // also for all others
  };

  struct Progress {
    std::string path;        // of the current file, from the folder of what was chosen
    std::uint64_t file = 0;  // the current one; the first is 1
    std::uint64_t files = 0;
    std::uint64_t bytes = 0;
    std::uint64_t allBytes = 0;
    bool isCounted = false;  // else the totals are still growing
  };

  enum class Why { kUnreadable, kUnwritable, kLink, kTooDeep, kIntoItself, kOntoItself, kOccupied };

  struct Problem {
    std::string name;  // its path from the folder of what was chosen
    Why why;
    std::error_code error;
  };

  struct Report {
    std::uint64_t copied = 0;  // files
    std::uint64_t skipped = 0;
    std::uint64_t left = 0;         // entries that could not be copied
    std::vector<Problem> problems;  // the first of them
    bool cancelled = false;
    bool stopped = false;  // at the last problem

    /// Adds what a later copying reports.
    void Add(const Report& later);
  };

  /// Path texts; `target` is a folder.
  Copying(std::vector<std::string> chosen, const std::string& target);

  /// Cancels.
  ~Copying() { Cancel(); }
  Copying(const Copying&) = delete;
  Copying& operator=(const Copying&) = delete;

  /// Works for a few milliseconds.
  State Step();

  /// In state kAsks: whether to replace the file that has the current one's place.
  void Decide(const Decision& decision);

  /// Ends at once. Removes what is not whole, and the folders made for it.
  void Cancel();

  const Progress& Now() const { return progress_; }
  const Report& Result() const { return report_; }

 private:
  void Advance();
  void Count();
  void BeginNext();
  void BeginFolder(const TreeWalk::Item& item);
  void BeginFile(const TreeWalk::Item& item);
  void StartCopy();
  void CopyMore();
  bool IsAccepted(const TreeWalk::Item& item) const;
  void LeaveFolders(const std::string& name);
  void Note(const std::string& name, Why why, std::error_code error = {});
  void NoteFailure(const FileCopy::Failure& failure);
  void EndFile();
  std::string PlaceOf(const TreeWalk::Item& item) const;

  const std::vector<std::string> chosen_;
  const std::string target_;
  TreeWalk counting_;
  TreeWalk walk_;
  State state_ = State::kWorks;
  Progress progress_;
  Report report_;
  std::optional<Decision> forAll_;
  TreeWalk::Item item_;             // the current file
  std::uint64_t bytesBefore_ = 0;   // of the files before it
  bool replaces_ = false;           // the current file may replace another
  std::unique_ptr<FileCopy> copy_;  // of the current file
  std::vector<std::string> made_;   // the names of the folders that were made on the way to it
  std::string buffer_;
};

}  // namespace files
