#pragma once

// Files that are written whole or not at all: an interruption at any moment leaves no part behind.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "files/pending_flush.h"
#include "platform/file.h"

namespace ModMail {

/// The name that a file has in its folder until it is whole. Only one file at a time is written,
/// and no attachment gets this name (mail/attachment_name.h). It is short, so that Windows gives it
/// no second name.
inline constexpr std::string_view kUnfinishedName = "unpack.tmp";

/// A file that appears under its name once it is whole, replacing any other.
class WholeFile {
 public:
  /// `unfinishedName`: of the file in the same folder until it is whole.
  explicit WholeFile(std::string_view path, std::string_view unfinishedName = kUnfinishedName);
  /// Removes what was written, unless PutInPlace succeeded.
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// Whether everything was written so far. After a failure nothing more is written.
  bool IsGood() const { return !error_; }
  void Write(std::string_view bytes);
  /// If it replaces another file, the file system may bring all of it to the disk first.
  bool PutInPlace();

  /// Whether so much has been written that PutInPlace could take long without a flush.
  bool HasMuchToFlush() const { return !error_ && unflushed_ > kMuch; }

  /// To be flushed on another thread. What has been written counts as flushed.
  files::PendingFlush OpenFlush();

 private:
  static constexpr std::size_t kMuch = 4U << 20;

  std::filesystem::path target_;
  std::filesystem::path unfinished_;
  std::error_code error_;
  platform::File file_;
  std::size_t unflushed_ = 0;  // bytes
};

/// Text appended to a file. Without Keep, the file gets its former length back.
class WholeAppendix {
 public:
  explicit WholeAppendix(std::string_view path);
  ~WholeAppendix();
  WholeAppendix(const WholeAppendix&) = delete;
  WholeAppendix& operator=(const WholeAppendix&) = delete;

  bool IsGood() const { return !error_; }
  void Write(std::string_view bytes);
  /// Gives up, because of an error of the text's source.
  void Fail(const std::error_code& error) { error_ = error; }
  void Keep() { isKept_ = !error_; }

 private:
  std::filesystem::path path_;
  std::uint64_t formerSize_ = 0;
  bool isKept_ = false;
  std::error_code error_;
  platform::File file_;
};

}  // namespace ModMail
