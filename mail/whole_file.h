#pragma once

// Writing so that a stop at any moment leaves a file whole or as if nothing had been written.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/file.h"

namespace ModMail {

/// The name that a file has in its folder until it is whole. One at a time is written. No
/// attachment is given this name (mail/attachment_name.h); it is short enough to have no second one
/// on Windows.
inline constexpr std::string_view kUnfinishedName = "unpack.tmp";

/// A file that appears under its name when it is whole, in the place of one that is there.
class WholeFile {
 public:
  explicit WholeFile(std::string_view path);
  /// Without PutInPlace nothing stays behind.
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;

  /// Whether everything could be written so far. Once something could not, nothing more is.
  bool IsGood() const { return !error_; }
  void Write(std::string_view bytes);
  bool PutInPlace();

 private:
  std::filesystem::path target_;
  std::filesystem::path unfinished_;
  std::error_code error_;
  platform::File file_;
};

/// Something appended to a file, which gets its former length back without Keep.
class WholeAppendix {
 public:
  explicit WholeAppendix(std::string_view path);
  ~WholeAppendix();
  WholeAppendix(const WholeAppendix&) = delete;
  WholeAppendix& operator=(const WholeAppendix&) = delete;

  bool IsGood() const { return !error_; }
  void Write(std::string_view bytes);
  /// There is no more to write.
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
