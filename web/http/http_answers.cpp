#include "web/http/http_answers.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <random>
#include <utility>

#include "platform/system_message.h"
#include "platform/text_case.h"
#include "text/strings.h"
#include "web/http/folder_list.h"
#include "web/http/http_date.h"
#include "web/http/media_type.h"
#include "web/http/page_header.h"
#include "web/http/validators.h"
#include "web/resource_kind.h"
#include "web/url_decoding.h"
#include "web/web_log.h"

namespace ModWeb {
namespace {

using Kind = net::Activity::Kind;
using net::Task;
using platform::File;

constexpr std::string_view kProgramFolder = "cgi-bin";
constexpr std::string_view kStyle = "style.css";
constexpr std::string_view kFormType = "application/x-www-form-urlencoded";

// The eleventh default document is never tried.
constexpr std::size_t kTriedPages = std::tuple_size_v<DefaultPageNames> - 1;

// "/a/b" as the path text of a file below the root.
std::string ResourceOf(const std::string& name) {
  return text::ReplaceAll(std::string_view(name).substr(1), "/", "\\");
}

// What is in the folder of programs is run, and not shown: sources, and what others have sent. Of
// names that have passed ParseTarget only those that differ in case are the folder's.
bool IsAmongPrograms(const std::string& path) {
  const std::string_view first = std::string_view(path).substr(1, path.find('/', 1) - 1);
  return platform::EqualIgnoringCase(first, kProgramFolder);
}

bool IsKnownMethod(std::string_view method) {
  constexpr auto kKnown =
      std::to_array<std::string_view>({"PUT", "DELETE", "OPTIONS", "PATCH", "TRACE", "CONNECT"});
  return std::find(kKnown.begin(), kKnown.end(), method) != kKnown.end();
}

Task<HttpResponse> Known(HttpResponse response) { co_return std::move(response); }

HttpResponse NotAllowed(std::string_view allowed) {
  HttpResponse response = Refused(405);
  response.AddField("Allow", allowed);
  return response;
}

std::string ContentRange(const ByteRange& range, std::uint64_t size) {
  return "bytes " + std::to_string(range.begin) + "-" +
         std::to_string(range.begin + range.size - 1) + "/" + std::to_string(size);
}

// Not to be found in a file by chance, nor made by somebody who knows it.
const std::string& Boundary() {
  static const std::string boundary = [] {
    std::random_device source;
    std::array<char, 40> text = {};
    std::snprintf(text.data(), text.size(), "tarnwerk-%08x%08x%08x", source(), source(), source());
    return std::string(text.data());
  }();
  return boundary;
}

void SetRanges(HttpResponse& response, const std::vector<ByteRange>& ranges, std::uint64_t size,
               const std::string& type) {
  response.status = 206;
  if (ranges.size() == 1) {
    response.AddField("Content-Range", ContentRange(ranges.front(), size));
    response.AddField("Content-Type", type);
    response.body.push_back({.range = ranges.front()});
    return;
  }
  response.AddField("Content-Type", "multipart/byteranges; boundary=" + Boundary());
  for (const ByteRange& range : ranges) {
    response.body.push_back({.text = "\r\n--" + Boundary() + "\r\nContent-Type: " + type +
                                     "\r\nContent-Range: " + ContentRange(range, size) + "\r\n\r\n",
                             .range = range});
  }
  response.body.push_back({.text = "\r\n--" + Boundary() + "--\r\n"});
}

// What a program reads, as for bare answers: the fields of a form are decoded, anything else is
// left as it is. Throws BadRequest.
std::string InputOf(const HttpRequest& request) {
  const std::string_view type = request[HttpRequest::kContentType];
  const std::string_view kind = text::TrimBlanks(type.substr(0, type.find(';')));
  if (!kind.empty() && !platform::EqualIgnoringCase(kind, kFormType)) return request.body;
  std::string_view form = request.body;
  if (form.ends_with("\r\n")) form.remove_suffix(2);
  return DecodeUrl(form);
}

std::string ReadBeginning(File& file, std::size_t most) {
  std::string beginning(
      static_cast<std::size_t>(std::min<std::uint64_t>(most, file.SizeWhenOpened())), '\0');
  std::error_code error;
  beginning.resize(file.Read(beginning.data(), beginning.size(), error));
  return beginning;
}

}  // namespace

Task<HttpResponse> HttpAnswers::Answer(HttpRequest&& request, const Client& client) {
  auto target = ParseTarget(request.target);
  if (!target) {
    Begin(*client, Kind::kCommand, request.method + " " + request.target, "");
    return Known(Refused(IsKnownMethod(request.method) ? 405 : 400));
  }
  if (request.method == "POST") return Post(std::move(request), std::move(*target), client);
  if (request.method == "GET" || request.method == "HEAD") {
    return Get(std::move(request), std::move(*target), client);
  }
  Begin(*client, Kind::kCommand, request.method + " " + target->path, "");
  return Known(IsKnownMethod(request.method) ? NotAllowed("GET, HEAD, POST") : Refused(501));
}

Task<HttpResponse> HttpAnswers::Refuse(int status, net::Connection& client) {
  client.Begin({.what = "HTTP"});
  return Known(Refused(status));
}

// Files and folders

Task<HttpResponse> HttpAnswers::Get(HttpRequest&& request, RequestTarget&& target,
                                    const Client& client) {
  const bool mayRead = site_.options.MayRead() && !IsAmongPrograms(target.path);
  if (!mayRead) {
    Begin(*client, Kind::kDownload, target.path, "");
    return Known(Forbidden(request, target, *client));
  }
  for (const std::string& name : NamesOf(target.path)) {
    const std::string resource = ResourceOf(name);
    const std::string path = site_.PathOf(resource);
    if (!target.namesFolder) {
      if (File file = site_.files.OpenIfExists(path); file.IsOpen()) {
        Begin(*client, Kind::kDownload, resource, path);
        return Known(SendFile(request, resource, std::move(file)));
      }
    }
    if (!site_.files.FolderExists(path)) continue;
    if (!target.namesFolder) {
      Begin(*client, Kind::kBrowse, name, path);
      return Known(Redirected(target.path + "/", target.query));
    }
    return ShowFolder(std::move(request), name, std::move(target), client);
  }
  Begin(*client, Kind::kDownload, ResourceOf(target.path), "");
  return Known(Refused(404));
}

// `name`: the folder's, in UTF-8, without a "/" at the end but for "/" itself.
Task<HttpResponse> HttpAnswers::ShowFolder(HttpRequest request, std::string name,
                                           RequestTarget target, Client client) {
  const std::string folder = name == "/" ? "" : ResourceOf(name) + "\\";
  for (std::size_t i = 0; i < kTriedPages; ++i) {
    const std::string& page = site_.options.DefaultPages.at(i);
    if (page.empty()) continue;
    const std::string path = site_.PathOf(folder + page);
    File file = site_.files.OpenIfExists(path);
    if (!file.IsOpen()) continue;
    Begin(*client, Kind::kDownload, folder + page, path);
    co_return SendFile(request, folder + page, std::move(file));
  }
  Begin(*client, Kind::kBrowse, name, site_.PathOf(folder));
  const bool isRoot = folder.empty();
  const std::string query = target.query.empty() ? "" : target.query.substr(1);
  std::vector<std::string> leftOut;
  if (isRoot) leftOut.emplace_back(kProgramFolder);
  Task<std::optional<std::string>> listing =
      BuildFolderList(site_.files, {.folder = site_.PathOf(folder),
                                    .urlPath = isRoot ? name : name + "/",
                                    .query = query,
                                    .hasStyle = site_.files.FileExists(site_.PathOf(kStyle)),
                                    .leftOut = std::move(leftOut)});
  std::optional<std::string> page = co_await listing;
  if (!page) co_return Refused(403);
  HttpResponse response;
  response.SetText("text/html; charset=utf-8", std::move(*page));
  co_return std::move(response);
}

HttpResponse HttpAnswers::SendFile(const HttpRequest& request, const std::string& resource,
                                   File file) const {
  HttpResponse response;
  const Validators validators(file);
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  response.AddField("Last-Modified", HttpDate(std::min(validators.written, now)));
  response.AddField("ETag", validators.tag);
  response.AddField("Accept-Ranges", "bytes");
  if (IsKnown(request, validators)) {
    response.status = 304;
    return response;
  }
  if (request.method == "GET" && IsHtmlPage(resource)) {
    site_.searchCopies.AddServed(site_.files, site_.options.WebRootDir, resource);
  }
  const std::uint64_t size = file.SizeWhenOpened();
  std::string type = TypeByName(resource);
  std::string beginning;
  if (DependsOnBytes(type)) beginning = ReadBeginning(file, kTypeBeginning);
  type = MediaTypeOf(std::move(type), beginning, beginning.size() == size);
  WantedRanges wanted;
  const bool mayBePart = request.method == "GET" && AreRangesOf(request, validators);
  if (mayBePart) wanted = ParseRanges(request[HttpRequest::kRange], size);
  if (wanted.answer == WantedRanges::Answer::kNone) {
    HttpResponse refused = Refused(416);
    refused.AddField("Content-Range", "bytes */" + std::to_string(size));
    return refused;
  }
  if (wanted.answer == WantedRanges::Answer::kRanges) {
    SetRanges(response, wanted.ranges, size, type);
  } else if (!beginning.empty() && beginning.size() == size) {
    response.SetText(type, std::move(beginning));
  } else {
    response.AddField("Content-Type", type);
    response.body.push_back({.range = {0, size}});
  }
  response.file = std::move(file);
  return response;
}

// Programs

Task<HttpResponse> HttpAnswers::Post(HttpRequest request, RequestTarget target, Client client) {
  const std::vector<std::string> names = NamesOf(target.path);
  const auto program = std::find_if(names.begin(), names.end(), [&](const std::string& name) {
    return IsProgram(name) && site_.programs.Exists(name.substr(1));
  });
  const std::string resource = (program == names.end() ? names.front() : *program).substr(1);
  Begin(*client, IsProgram(resource) ? Kind::kProgram : Kind::kCommand,
        IsProgram(resource) ? "cgi-bin/" + resource : "POST " + target.path, "");
  if (IsProgram(resource) && !site_.options.MayRunPrograms()) {
    co_return Forbidden(request, target, *client);
  }
  if (program == names.end()) {
    co_return IsShown(target.path) ? NotAllowed("GET, HEAD") : Refused(404);
  }
  std::string input;
  try {
    input = InputOf(request);
  } catch (const BadRequest&) {
    co_return Refused(400);
  }
  Task<File> running = site_.programs.Run(resource, std::move(input));
  File page = co_await running;
  co_return page.IsOpen() ? ProgramPage(std::move(page)) : Refused(500);
}

HttpResponse HttpAnswers::ProgramPage(File page) const {
  const std::uint64_t size = page.SizeWhenOpened();
  const std::string beginning = ReadBeginning(page, kTypeBeginning);
  const PageHeader header = ParsePageHeader(beginning).value_or(PageHeader());
  HttpResponse response = {.status = header.status, .reason = header.reason};
  response.fields = header.fields;
  const std::string_view content = std::string_view(beginning).substr(header.size);
  if (!header.hasType) {
    response.AddField("Content-Type", MediaTypeOf("text/html", content, beginning.size() == size));
  }
  if (header.size == 0) response.AddField("Cache-Control", "no-store");
  response.body.push_back({.range = {header.size, size - header.size}});
  response.file = std::move(page);
  return response;
}

// Common parts

// Whether there is something that GET is for.
bool HttpAnswers::IsShown(const std::string& path) const {
  if (IsAmongPrograms(path)) return false;
  const std::vector<std::string> names = NamesOf(path);
  return std::any_of(names.begin(), names.end(), [&](const std::string& name) {
    const std::string entry = site_.PathOf(ResourceOf(name));
    return site_.files.FileExists(entry) || site_.files.FolderExists(entry);
  });
}

HttpResponse HttpAnswers::Forbidden(const HttpRequest& request, const RequestTarget& target,
                                    const net::Connection& client) const {
  LogRefusal(site_.program, client,
             {.CurrentMethod = request.method, .CurrentResource = target.path.substr(1)});
  return Refused(403);
}

void HttpAnswers::Begin(net::Connection& client, Kind kind, std::string shown,
                        const std::string& path) const {
  client.Begin({.kind = kind,
                .what = shown.empty() ? "/" : std::move(shown),
                .path = client.IsObserved() ? path : ""});
}

}  // namespace ModWeb
