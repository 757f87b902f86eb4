#include "bench/http_response.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdlib>

namespace bench {
namespace {

constexpr std::string_view kHeaderEnd = "\r\n\r\n";
constexpr std::string_view kLength = "\r\ncontent-length:";

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

}  // namespace

void HttpResponse::Take(std::string_view piece) {
  if (hasHeader_) {
    bodyBytes_ += piece.size();
    return;
  }
  header_.append(piece);
  const std::size_t end = header_.find(kHeaderEnd);
  if (end != std::string::npos) TakeHeader(end + kHeaderEnd.size());
}

void HttpResponse::TakeHeader(std::size_t end) {
  hasHeader_ = true;
  bodyBytes_ = header_.size() - end;
  header_.resize(end);
  const std::string lower = Lower(header_);
  const std::size_t length = lower.find(kLength);
  if (length == std::string::npos) return;
  length_ = std::strtoull(lower.c_str() + length + kLength.size(), nullptr, 10);
}

std::string HttpResponse::Request(const std::string& name, bool keepsAlive) {
  return "GET /" + name + " HTTP/1.1\r\nHost: x\r\n" + (keepsAlive ? "" : "Connection: close\r\n") +
         "\r\n";
}

}  // namespace bench
