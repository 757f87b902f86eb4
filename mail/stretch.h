#pragma once

// A stretch of a message file, and reading it piece by piece. Received messages can be larger than
// the memory, so that nothing keeps more of one than a piece.

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
  /// How much is done between two looks at other events: mostly far below a millisecond's work, a
  /// few of them for what is made to take long.
  static constexpr std::size_t kPieceBytes = std::size_t{64} * 1024;

  /// `file` must outlive the reader, and only one reader at a time reads it.
  StretchReader(platform::File& file, const Stretch& stretch);

  /// The next piece, good until the next call; empty at the end, and with `error` set where the
  /// file cannot be read or ends too early.
  std::string_view Next(std::error_code& error);

 private:
  platform::File* file_;
  std::uint64_t begin_;
  std::uint64_t left_;
  bool sought_ = false;
  std::string piece_;
};

}  // namespace ModMail
