#pragma once

// Reads one HTTP request, in whatever pieces it arrives, and says what is wrong with one that
// cannot be answered. What it holds is bounded: 8 KiB of request line and header, and a body of a
// size that the caller sets. A body is kept for POST only, and is otherwise read over, as are the
// extensions of chunks and the trailer.
//
// The syntax is the business of llhttp, behind a stricter look at the lines of the header
// (web/http/header_syntax.h): a request whose length could be understood in two ways is refused.

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace ModWeb {

struct HttpRequest {
  /// The fields that count. One that is repeated has its values joined by commas.
  enum Field {
    kHost,
    kRange,
    kIfRange,
    kIfModifiedSince,
    kIfNoneMatch,
    kIfUnmodifiedSince,
    kIfMatch,
    kContentType,
    kExpect,
    kTransferEncoding,
    kFields,
  };

  std::string method;
  std::string target;  // as it was sent
  std::array<std::string, kFields> fields;
  std::string body;
  bool keepsAlive = false;  // the client would like to go on with this connection

  const std::string& operator[](Field field) const { return fields.at(field); }
};

class RequestReader {
 public:
  enum class Progress {
    kIncomplete,
    kComplete,
    kRefused,  // nothing behind it can be understood
  };

  static constexpr std::size_t kLongestHeader = 8192;

  explicit RequestReader(std::size_t longestBody);
  ~RequestReader();
  RequestReader(RequestReader&&) noexcept;
  RequestReader& operator=(RequestReader&&) noexcept;

  /// Takes from the beginning of `bytes` what belongs to the request. Not to be called again once
  /// the progress is another than kIncomplete.
  Progress Read(std::string_view& bytes);

  /// The request, if it is complete.
  HttpRequest& Request();

  /// Why it was refused: the status of the answer.
  int Refusal() const;

  /// Whether the client waits to be told that it may send the body. True once.
  bool TakeWantsContinue();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace ModWeb
