#pragma once

// The copy of one file, made in pieces. It grows under a hidden name beside its place and appears
// there only when it is whole; until then, what is there stays. Given up, it leaves nothing.

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

#include "platform/file.h"

namespace files {

class FileCopy {
 public:
  /// Where a failure happened.
  enum class Side { kSource, kTarget };

  struct Failure {
    std::error_code error;
    Side side = Side::kSource;
    bool isFinal = false;  // the target takes nothing more, from any file
    explicit operator bool() const { return static_cast<bool>(error); }
  };

  /// `from`, `to`: path texts of a file and of its place, whose folder exists.
  FileCopy(const std::string& from, const std::string& to, Failure& failure);
  ~FileCopy();
  FileCopy(const FileCopy&) = delete;
  FileCopy& operator=(const FileCopy&) = delete;

  /// Copies the next piece through `buffer`; what grows meanwhile is copied up to its size at the
  /// beginning. Returns the bytes copied.
  std::size_t CopyPiece(std::string& buffer, Failure& failure);

  /// Whether everything has been copied.
  bool IsWhole() const { return whole_; }

  /// Puts the copy, with the source's time and rights, in its place. What is there is replaced if
  /// `replace`, else an error.
  void Finish(bool replace, Failure& failure);

 private:
  void OpenTarget(std::error_code& error);
  void TakeOverLooks();

  std::filesystem::path source_;
  std::filesystem::path place_;
  std::filesystem::path growing_;  // empty once it is in its place
  platform::File from_;
  platform::File to_;
  std::uint64_t copied_ = 0;
  bool whole_ = false;
};

}  // namespace files
