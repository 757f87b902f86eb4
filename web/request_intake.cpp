#include "web/request_intake.h"

namespace ModWeb {
namespace {

// Positions count from 1 and 0 means "not found", because that is how the cuts below are defined:
// a method word without its blank is at 0, and the cut begins a few characters into the text.
std::size_t Position(std::string_view text, std::string_view what, std::size_t from = 1) {
  if (from > text.size()) return 0;
  const std::size_t found = text.find(what, from - 1);
  return found == std::string_view::npos ? 0 : found + 1;
}

std::optional<std::string> Cut(std::string_view text, std::size_t begin, std::size_t end) {
  if (end <= begin) return std::nullopt;
  return std::string(text.substr(begin - 1, end - begin));
}

}  // namespace

RequestMethod MethodOf(std::string_view requestText) {
  if (requestText.starts_with("GET")) return RequestMethod::kGet;
  if (requestText.starts_with("POST")) return RequestMethod::kPost;
  return RequestMethod::kOther;
}

std::optional<std::string> CutGetResource(std::string_view requestText) {
  const std::size_t begin = Position(requestText, "GET ") + 4;
  return Cut(requestText, begin, Position(requestText, " ", begin));
}

std::optional<std::string> CutPostResource(std::string_view requestText) {
  const std::size_t begin = Position(requestText, "POST ") + 5;
  // A "?" anywhere ends the resource, one in the body too.
  const std::size_t question = Position(requestText, "?");
  const std::size_t end = question != 0 ? question : Position(requestText, " ", begin);
  return Cut(requestText, begin, end);
}

}  // namespace ModWeb
