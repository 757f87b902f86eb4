#include "web/http/request_reader.h"

#include <llhttp.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/ascii.h"
#include "text/strings.h"
#include "web/http/header_syntax.h"

namespace ModWeb {
namespace {

using Progress = RequestReader::Progress;

constexpr int kBadRequest = 400;
constexpr int kBodyTooLarge = 413;
constexpr int kTargetTooLong = 414;
constexpr int kHeaderTooLarge = 431;
constexpr int kNotImplemented = 501;

constexpr std::array<std::string_view, HttpRequest::kFields> kNames = {
    "Host",          "Range",
    "If-Range",      "If-Modified-Since",
    "If-None-Match", "If-Unmodified-Since",
    "If-Match",      "Content-Type",
    "Expect",        "Transfer-Encoding"};

std::optional<std::size_t> KnownField(std::string_view name) {
  const auto* const known = std::find_if(
      kNames.begin(), kNames.end(),
      [name](std::string_view each) { return platform::EqualIgnoringAsciiCase(each, name); });
  if (known == kNames.end()) return std::nullopt;
  return static_cast<std::size_t>(known - kNames.begin());
}

// Where a method is not known, it may still be one. What comes behind the character that told it
// has not been read yet, perhaps.
bool IsInMethod(char c) { return (c >= 'A' && c <= 'Z') || c == '-' || c == '_'; }

// A host and perhaps a port, or nothing.
bool IsHost(std::string_view text) {
  static constexpr std::string_view kOthersInToken = "#^`|";
  static constexpr std::string_view kMarks = "(),;=:[]";
  return std::all_of(text.begin(), text.end(), [](char c) {
    if (platform::IsAsciiLetterOrDigit(c)) return true;
    if (!IsInToken(c)) return kMarks.find(c) != std::string_view::npos;
    return kOthersInToken.find(c) == std::string_view::npos;
  });
}

bool IsBeyondAscii(char c) { return static_cast<unsigned char>(c) > 127; }

}  // namespace

struct RequestReader::State {
  explicit State(std::size_t most) : longestBody(most) {
    static const llhttp_settings_t settings = Settings();
    llhttp_init(&parser, HTTP_REQUEST, &settings);
    parser.data = this;
  }

  static llhttp_settings_t Settings();
  static State& Of(llhttp_t* parser) { return *static_cast<State*>(parser->data); }

  int Refuse(int status) {
    refusal = status;
    return -1;
  }

  /// What came where the parser found this.
  std::string_view Original(const char* at, std::size_t size) const {
    return came.substr(static_cast<std::size_t>(at - parsed.data()), size);
  }

  int OnFieldEnd();
  int OnHeaderEnd();
  int OnChunk();
  int OnBody(std::string_view piece);
  bool IsInLines() const { return !isHeaderRead || isInTrailer; }
  Progress RefuseWith(int status);
  Progress ReadLines(std::string_view& bytes);
  Progress ReadBody(std::string_view& bytes);
  Progress ReadPiece(std::string_view piece, std::string_view& bytes);

  const std::size_t longestBody;
  llhttp_t parser = {};
  HttpRequest request;
  std::string_view came;    // what is being parsed
  std::string_view parsed;  // the same, with lines in ASCII
  std::string fieldName;
  std::string fieldValue;
  HeaderSyntax syntax{HeaderSyntax::Of::kHeader};
  std::size_t lineBytes = 0;  // of the header or the trailer
  std::size_t bodyBytes = 0;
  std::size_t rawBodyBytes = 0;  // with what divides it into chunks
  std::array<int, HttpRequest::kFields> times = {};
  int refusal = 0;
  bool isHeaderRead = false;
  bool isInTrailer = false;
  bool isComplete = false;
  bool wantsContinue = false;
};

llhttp_settings_t RequestReader::State::Settings() {
  llhttp_settings_t settings;
  llhttp_settings_init(&settings);
  settings.on_method = [](llhttp_t* source, const char* at, std::size_t size) {
    Of(source).request.method += Of(source).Original(at, size);
    return 0;
  };
  settings.on_url = [](llhttp_t* source, const char* at, std::size_t size) {
    Of(source).request.target += Of(source).Original(at, size);
    return 0;
  };
  settings.on_header_field = [](llhttp_t* source, const char* at, std::size_t size) {
    Of(source).fieldName += Of(source).Original(at, size);
    return 0;
  };
  settings.on_header_value = [](llhttp_t* source, const char* at, std::size_t size) {
    Of(source).fieldValue += Of(source).Original(at, size);
    return 0;
  };
  settings.on_header_value_complete = [](llhttp_t* source) { return Of(source).OnFieldEnd(); };
  settings.on_headers_complete = [](llhttp_t* source) { return Of(source).OnHeaderEnd(); };
  settings.on_chunk_header = [](llhttp_t* source) { return Of(source).OnChunk(); };
  settings.on_body = [](llhttp_t* source, const char* at, std::size_t size) {
    return Of(source).OnBody({at, size});
  };
  settings.on_message_complete = [](llhttp_t* source) {
    Of(source).isComplete = true;
    return static_cast<int>(HPE_PAUSED);
  };
  return settings;
}

int RequestReader::State::OnFieldEnd() {
  if (const auto known = KnownField(fieldName); known && !isInTrailer) {
    ++times.at(*known);
    std::string& field = request.fields.at(*known);
    if (!field.empty()) field += ", ";
    field += text::TrimBlanks(fieldValue);
  }
  fieldName.clear();
  fieldValue.clear();
  return 0;
}

int RequestReader::State::OnHeaderEnd() {
  isHeaderRead = true;
  if (parser.http_major != 1) return Refuse(kBadRequest);
  const bool isNewer = parser.http_minor > 0;
  const int hosts = times.at(HttpRequest::kHost);
  if (hosts > 1 || (isNewer && hosts == 0) || !IsHost(request[HttpRequest::kHost])) {
    return Refuse(kBadRequest);
  }
  if (times.at(HttpRequest::kTransferEncoding) > 0) {
    if (!isNewer) return Refuse(kBadRequest);
    const std::string& coding = request[HttpRequest::kTransferEncoding];
    if (!platform::EqualIgnoringAsciiCase(coding, "chunked")) return Refuse(kNotImplemented);
  }
  // What follows a CONNECT is no request for the parser, whatever length it has.
  request.keepsAlive = llhttp_should_keep_alive(&parser) != 0 && parser.method != HTTP_CONNECT;
  const bool hasLength = (parser.flags & F_CONTENT_LENGTH) != 0;
  if (hasLength && parser.content_length > longestBody) return Refuse(kBodyTooLarge);
  const std::string& expected = request[HttpRequest::kExpect];
  wantsContinue = isNewer && platform::EqualIgnoringAsciiCase(expected, "100-continue");
  return 0;
}

// The chunk of length 0 is the last, and lines follow, which count for nothing.
int RequestReader::State::OnChunk() {
  if (parser.content_length > longestBody - bodyBytes) return Refuse(kBodyTooLarge);
  if (parser.content_length > 0) return 0;
  isInTrailer = true;
  syntax = HeaderSyntax(HeaderSyntax::Of::kTrailer);
  lineBytes = 0;
  return static_cast<int>(HPE_PAUSED);
}

int RequestReader::State::OnBody(std::string_view piece) {
  bodyBytes += piece.size();
  if (bodyBytes > longestBody) return Refuse(kBodyTooLarge);
  if (request.method == "POST") request.body += piece;
  return 0;
}

Progress RequestReader::State::RefuseWith(int status) {
  refusal = status;
  return Progress::kRefused;
}

Progress RequestReader::State::ReadLines(std::string_view& bytes) {
  const std::string_view piece = bytes.substr(0, kLongestHeader - lineBytes);
  const std::size_t size = syntax.Take(piece);
  const bool isWrong = size < piece.size() && !syntax.IsAtEnd();
  lineBytes += size;
  const Progress progress = ReadPiece(piece.substr(0, size), bytes);
  if (progress != Progress::kIncomplete) return progress;
  // The preface of HTTP/2 is longer for the parser.
  const bool isOver = syntax.IsAtEnd();
  if (isWrong || (isOver && IsInLines())) return RefuseWith(kBadRequest);
  if (isOver || lineBytes < kLongestHeader) return Progress::kIncomplete;
  return RefuseWith(syntax.IsInFirstLine() ? kTargetTooLong : kHeaderTooLarge);
}

// Chunks of one byte are allowed, endless extensions are not.
Progress RequestReader::State::ReadBody(std::string_view& bytes) {
  constexpr std::size_t kMostPerByte = 8;
  const std::size_t before = bytes.size();
  const Progress progress = ReadPiece(bytes, bytes);
  rawBodyBytes += before - bytes.size();
  const bool isTooLong = rawBodyBytes > kLongestHeader + kMostPerByte * longestBody;
  return isTooLong ? RefuseWith(kBodyTooLarge) : progress;
}

// `piece` is the beginning of `bytes`. Newer versions of the parser take nothing but ASCII in a
// target. They get a "!" for other bytes, which is as wrong as these in a method, a version or a
// length.
Progress RequestReader::State::ReadPiece(std::string_view piece, std::string_view& bytes) {
  std::string ascii;
  came = parsed = piece;
  if (IsInLines() && std::any_of(piece.begin(), piece.end(), IsBeyondAscii)) {
    ascii = piece;
    std::replace_if(ascii.begin(), ascii.end(), IsBeyondAscii, '!');
    parsed = ascii;
  }
  const llhttp_errno_t error = llhttp_execute(&parser, parsed.data(), parsed.size());
  if (error == HPE_OK) {
    bytes.remove_prefix(piece.size());
    return Progress::kIncomplete;
  }
  const char* const end = llhttp_get_error_pos(&parser);
  if (error == HPE_PAUSED) {
    bytes.remove_prefix(static_cast<std::size_t>(end - parsed.data()));
    llhttp_resume(&parser);
    return isComplete ? Progress::kComplete : Progress::kIncomplete;
  }
  if (refusal != 0) return Progress::kRefused;
  // Beside a length, a coding is wrong whether or not it is known.
  const bool isUnknown =
      (error == HPE_INVALID_TRANSFER_ENCODING && (parser.flags & F_CONTENT_LENGTH) == 0) ||
      (error == HPE_INVALID_METHOD && IsInMethod(*end));
  return RefuseWith(isUnknown ? kNotImplemented : kBadRequest);
}

RequestReader::RequestReader(std::size_t longestBody)
    : state_(std::make_unique<State>(longestBody)) {}
RequestReader::~RequestReader() = default;
RequestReader::RequestReader(RequestReader&&) noexcept = default;
RequestReader& RequestReader::operator=(RequestReader&&) noexcept = default;

RequestReader::Progress RequestReader::Read(std::string_view& bytes) {
  Progress progress = Progress::kIncomplete;
  while (!bytes.empty() && progress == Progress::kIncomplete) {
    progress = state_->IsInLines() ? state_->ReadLines(bytes) : state_->ReadBody(bytes);
  }
  return progress;
}

HttpRequest& RequestReader::Request() { return state_->request; }

int RequestReader::Refusal() const { return state_->refusal; }

bool RequestReader::TakeWantsContinue() { return std::exchange(state_->wantsContinue, false); }

}  // namespace ModWeb
