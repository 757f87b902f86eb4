#include <algorithm>

#include "tests/fuzz/fuzz_input.h"
#include "text/strings.h"
#include "web/http/byte_ranges.h"
#include "web/http/page_header.h"
#include "web/http/request_reader.h"
#include "web/http/request_target.h"

namespace {

using namespace ModWeb;
using Progress = RequestReader::Progress;

constexpr std::size_t kLongestBody = 100;

struct Outcome {
  RequestReader reader{kLongestBody};
  Progress progress = Progress::kIncomplete;
  std::size_t taken = 0;
};

// Reads `bytes` in pieces of up to `most`.
Outcome Read(std::string_view bytes, std::size_t most) {
  Outcome outcome;
  while (outcome.progress == Progress::kIncomplete && outcome.taken < bytes.size()) {
    std::string_view piece = bytes.substr(outcome.taken, most);
    const std::size_t size = piece.size();
    outcome.progress = outcome.reader.Read(piece);
    if (outcome.progress != Progress::kRefused) outcome.taken += size - piece.size();
  }
  return outcome;
}

bool AreSame(Outcome& one, Outcome& other) {
  if (one.progress != other.progress) return false;
  if (one.progress == Progress::kRefused) return one.reader.Refusal() == other.reader.Refusal();
  const HttpRequest& first = one.reader.Request();
  const HttpRequest& second = other.reader.Request();
  return one.taken == other.taken && first.method == second.method &&
         first.target == second.target && first.fields == second.fields &&
         first.body == second.body && first.keepsAlive == second.keepsAlive;
}

void CheckTarget(std::string_view text) {
  const auto target = ParseTarget(text);
  if (!target) return;
  const std::string inFolder = target->path + "/";
  fuzz::Require(target->path.starts_with('/') && target->path.find('\\') == std::string::npos);
  fuzz::Require(inFolder.find("/../") == std::string::npos);
  fuzz::Require(target->path.find("//") == std::string::npos);
  fuzz::Require(std::none_of(target->path.begin(), target->path.end(), text::IsControl));
  fuzz::Require(target->query.find_first_of("\r\n") == std::string::npos);
  for (const std::string& name : NamesOf(target->path)) fuzz::Require(name.starts_with('/'));
}

void CheckRanges(std::string_view field, std::uint64_t fileSize) {
  std::uint64_t bytes = 0;
  for (const ByteRange& range : ParseRanges(field, fileSize).ranges) {
    fuzz::Require(range.size > 0 && range.begin + range.size <= fileSize);
    bytes += range.size;
  }
  fuzz::Require(bytes <= fileSize);
}

void CheckPageHeader(std::string_view page) {
  const auto header = ParsePageHeader(page);
  if (!header) return;
  fuzz::Require(header->size <= page.size());
  std::string_view rest = header->fields;
  for (std::size_t end = 0; !rest.empty(); rest.remove_prefix(end + 2)) {
    end = rest.find("\r\n");
    fuzz::Require(end != std::string_view::npos);
    const std::string_view line = rest.substr(0, end);
    fuzz::Require(line.find(": ") != std::string_view::npos || line.ends_with(':'));
    fuzz::Require(std::none_of(line.begin(), line.end(), text::IsControl));
  }
}

}  // namespace

// However a request arrives, it is the same request; names stay below the root, ranges within the
// file, and a program's header is one of whole lines.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string_view bytes = fuzz::Text(data + 2, size - 2);
  Outcome whole = Read(bytes, bytes.size());
  Outcome pieces = Read(bytes, data[0] % 16 + 1U);
  fuzz::Require(AreSame(whole, pieces));
  const HttpRequest& request = whole.reader.Request();
  fuzz::Require(request.body.size() <= kLongestBody);
  CheckTarget(request.target);
  CheckTarget(bytes);
  CheckRanges(request[HttpRequest::kRange], data[1]);
  CheckRanges(bytes, data[1]);
  CheckPageHeader(bytes);
  return 0;
}
