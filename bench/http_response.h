#pragma once

// Reads one HTTP/1.1 response of known length, as it arrives.

#include <cstdint>
#include <string>
#include <string_view>

namespace bench {

class HttpResponse {
 public:
  void Take(std::string_view piece);

  /// Header and body have arrived.
  bool IsWhole() const { return hasHeader_ && bodyBytes_ == length_; }
  /// Whether it is whole, and a 200 with that many bytes.
  bool IsFound(std::uint64_t bytes) const {
    return IsWhole() && length_ == bytes && header_.starts_with("HTTP/1.1 200 ");
  }
  /// Of header and body, so far.
  std::uint64_t Bytes() const { return header_.size() + bodyBytes_; }

  /// The request for a file, in one piece.
  static std::string Request(const std::string& name, bool keepsAlive);

 private:
  void TakeHeader(std::size_t end);

  std::string header_;
  bool hasHeader_ = false;
  std::uint64_t length_ = 0;
  std::uint64_t bodyBytes_ = 0;
};

}  // namespace bench
