#include "web/http/request_reader.h"

#include <llhttp.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/text_case.h"
#include "text/strings.h"

namespace ModWeb {
namespace {

using Progress = RequestReader::Progress;

constexpr int kBadRequest = 400;
constexpr int kBodyTooLarge = 413;
constexpr int kTargetTooLong = 414;
constexpr int kHeaderTooLarge = 431;
constexpr int kNotImplemented = 501;

constexpr std::array<std::string_view, HttpRequest::kFields> kNames = {
    "HOST", "RANGE", "IF-RANGE", "IF-MODIFIED-SINCE", "IF-NONE-MATCH", "CONTENT-TYPE", "EXPECT"};

std::optional<std::size_t> KnownField(std::string_view name) {
  const std::string upper = platform::UpperCase(name);
  const auto* const known = std::find(kNames.begin(), kNames.end(), upper);
  if (known == kNames.end()) return std::nullopt;
  return static_cast<std::size_t>(known - kNames.begin());
}

// Where a method is not known, it may still be one. What comes behind the character that told it
// has not been read yet, perhaps.
bool IsInMethod(char c) { return (c >= 'A' && c <= 'Z') || c == '-' || c == '_'; }

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

  int OnField(std::string_view piece);
  int OnFieldEnd();
  int OnHeaderEnd();
  int OnBody(std::string_view piece);
  Progress ReadPiece(std::string_view piece, std::string_view& bytes);

  const std::size_t longestBody;
  llhttp_t parser = {};
  HttpRequest request;
  std::string fieldName;
  std::string fieldValue;
  std::size_t headerBytes = 0;
  std::size_t bodyBytes = 0;
  int hosts = 0;
  int refusal = 0;
  bool isTargetRead = false;
  bool isHeaderRead = false;
  bool isComplete = false;
  bool wantsContinue = false;
};

llhttp_settings_t RequestReader::State::Settings() {
  llhttp_settings_t settings;
  llhttp_settings_init(&settings);
  settings.on_method = [](llhttp_t* source, const char* at, std::size_t size) {
    Of(source).request.method.append(at, size);
    return 0;
  };
  settings.on_url = [](llhttp_t* source, const char* at, std::size_t size) {
    Of(source).request.target.append(at, size);
    return 0;
  };
  settings.on_url_complete = [](llhttp_t* source) {
    Of(source).isTargetRead = true;
    return 0;
  };
  settings.on_header_field = [](llhttp_t* source, const char* at, std::size_t size) {
    Of(source).fieldName.append(at, size);
    return 0;
  };
  settings.on_header_value = [](llhttp_t* source, const char* at, std::size_t size) {
    Of(source).fieldValue.append(at, size);
    return 0;
  };
  settings.on_header_value_complete = [](llhttp_t* source) { return Of(source).OnFieldEnd(); };
  settings.on_headers_complete = [](llhttp_t* source) { return Of(source).OnHeaderEnd(); };
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
  const std::string name = std::exchange(fieldName, {});
  const std::string value = std::exchange(fieldValue, {});
  const auto known = KnownField(name);
  if (!known) return 0;
  if (*known == HttpRequest::kHost && ++hosts > 1) return Refuse(kBadRequest);
  std::string& field = request.fields.at(*known);
  if (!field.empty()) field += ", ";
  field += text::TrimBlanks(value);
  return 0;
}

int RequestReader::State::OnHeaderEnd() {
  isHeaderRead = true;
  if (parser.http_major != 1) return Refuse(kBadRequest);
  const bool isNewer = parser.http_minor > 0;
  if (isNewer && hosts == 0) return Refuse(kBadRequest);
  request.keepsAlive = llhttp_should_keep_alive(&parser) != 0;
  const bool hasLength = (parser.flags & F_CONTENT_LENGTH) != 0;
  if (hasLength && parser.content_length > longestBody) return Refuse(kBodyTooLarge);
  wantsContinue = isNewer && platform::UpperCase(request[HttpRequest::kExpect]) == "100-CONTINUE";
  return 0;
}

int RequestReader::State::OnBody(std::string_view piece) {
  bodyBytes += piece.size();
  if (bodyBytes > longestBody) return Refuse(kBodyTooLarge);
  if (request.method == "POST") request.body += piece;
  return 0;
}

// `piece` is the beginning of `bytes`.
Progress RequestReader::State::ReadPiece(std::string_view piece, std::string_view& bytes) {
  const bool wasInHeader = !isHeaderRead;
  const llhttp_errno_t error = llhttp_execute(&parser, piece.data(), piece.size());
  if (isComplete) {
    const char* const end = llhttp_get_error_pos(&parser);
    bytes.remove_prefix(static_cast<std::size_t>(end - piece.data()));
    return Progress::kComplete;
  }
  if (error != HPE_OK) {
    const bool isUnknown =
        error == HPE_INVALID_METHOD && IsInMethod(*llhttp_get_error_pos(&parser));
    if (refusal == 0) refusal = isUnknown ? kNotImplemented : kBadRequest;
    return Progress::kRefused;
  }
  bytes.remove_prefix(piece.size());
  if (wasInHeader) headerBytes += piece.size();
  if (isHeaderRead || headerBytes < kLongestHeader) return Progress::kIncomplete;
  refusal = isTargetRead ? kHeaderTooLarge : kTargetTooLong;
  return Progress::kRefused;
}

RequestReader::RequestReader(std::size_t longestBody)
    : state_(std::make_unique<State>(longestBody)) {}
RequestReader::~RequestReader() = default;
RequestReader::RequestReader(RequestReader&&) noexcept = default;
RequestReader& RequestReader::operator=(RequestReader&&) noexcept = default;

RequestReader::Progress RequestReader::Read(std::string_view& bytes) {
  Progress progress = Progress::kIncomplete;
  while (!bytes.empty() && progress == Progress::kIncomplete) {
    const std::size_t most =
        state_->isHeaderRead ? bytes.size() : kLongestHeader - state_->headerBytes;
    progress = state_->ReadPiece(bytes.substr(0, most), bytes);
  }
  return progress;
}

HttpRequest& RequestReader::Request() { return state_->request; }

int RequestReader::Refusal() const { return state_->refusal; }

bool RequestReader::TakeWantsContinue() { return std::exchange(state_->wantsContinue, false); }

}  // namespace ModWeb
