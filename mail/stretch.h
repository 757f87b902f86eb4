#pragma once

// A part of a message file, and a reader for it. Messages can be larger than the memory, so they
// are read piece by piece.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/file.h"

namespace ModMail {

struct Stretch {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;

  std::uint64_t Size() const { return end > begin ? end - begin : 0; }
};

class StretchReader {
 public:
  /// The amount of work between two yields to other events: usually far less than a millisecond, at
  /// worst a few milliseconds.
  static constexpr std::size_t kPieceBytes = std::size_t{64} * 1024;

  /// `file` must outlive the reader, and may have only one reader at a time.
  StretchReader(platform::File& file, const Stretch& stretch);

  /// The next piece, valid until the next call. Empty at the end, and with `error` set if the file
  /// cannot be read or ends too early.
  std::string_view Next(std::error_code& error);

 private:
  platform::File* file_;
  std::uint64_t begin_;
  std::uint64_t left_;
  bool sought_ = false;
  std::string piece_;
};

}  // namespace ModMail
