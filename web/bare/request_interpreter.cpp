#include "web/bare/request_interpreter.h"

#include <algorithm>
#include <array>

#include "text/code_page.h"
#include "text/strings.h"
#include "text/utf8.h"
#include "web/resource_kind.h"
#include "web/url_decoding.h"

namespace ModWeb {
namespace {

using Action = Decision::Action;
using Kind = net::Activity::Kind;

// No code page uses the bytes that are looked for here as parts of other characters.
//
// Positions count from 1 and 0 means "not found", because the cuts below are defined so: a method
// word without its blank is at 0, and the cut begins a few characters into the text.
std::size_t Position(std::string_view text, std::string_view what, std::size_t from = 1) {
  if (from > text.size()) return 0;
  const std::size_t found = text.find(what, from - 1);
  return found == std::string_view::npos ? 0 : found + 1;
}

// Leaves `resource` as it is if there is nothing to cut.
void Cut(std::string_view request, std::size_t begin, std::size_t end, std::string& resource) {
  if (end > begin) resource = text::FromSystem(request.substr(begin - 1, end - begin));
}

void CutGetResource(std::string_view request, std::string& resource) {
  const std::size_t begin = Position(request, "GET ") + 4;
  Cut(request, begin, Position(request, " ", begin), resource);
}

void CutPostResource(std::string_view request, std::string& resource) {
  const std::size_t begin = Position(request, "POST ") + 5;
  // A "?" anywhere ends the resource, one in the body too.
  const std::size_t question = Position(request, "?");
  const std::size_t end = question != 0 ? question : Position(request, " ", begin);
  Cut(request, begin, end, resource);
}

// The first character is assumed to be "/" and is not checked.
std::string WithoutFirstCharacter(const std::string& resource) {
  return resource.empty() ? resource : resource.substr(text::CharacterEnd(resource, 0));
}

}  // namespace

// A method is told by its word, whatever follows the word.
const RequestInterpreter::Method* RequestInterpreter::Find(std::string_view request) {
  using Self = RequestInterpreter;
  static constexpr auto kMethods = std::to_array<Method>({
      {.word = "GET", .function = &Self::ServeGetRequest},
      {.word = "POST", .function = &Self::ServePostRequest},
  });
  const auto* const method =
      std::find_if(kMethods.begin(), kMethods.end(),
                   [request](const Method& one) { return request.starts_with(one.word); });
  return method == kMethods.end() ? nullptr : method;
}

Decision RequestInterpreter::Interpret(std::string_view request) {
  const Method* method = Find(request);
  if (method == nullptr) return {};
  session_.CurrentMethod = method->word;
  return (this->*method->function)(request);
}

Decision RequestInterpreter::ServeGetRequest(std::string_view request) {
  std::string& resource = session_.CurrentResource;
  CutGetResource(request, resource);
  if (resource != "/") {
    resource = WithoutFirstCharacter(resource);
  } else {
    resource = options_.StartDefaultPage ? FindDefaultPage() : options_.FirstDefaultPage;
  }
  std::string shown = resource.empty() ? "/" : resource;
  if (!options_.MayRead()) {
    return {.action = Action::kRefuseGet, .kind = Kind::kDownload, .shown = std::move(shown)};
  }
  resource = text::ReplaceAll(resource, "/", "\\");
  return {.action = IsHtmlPage(resource) ? Action::kSendHtmlFile : Action::kSendFile,
          .resource = resource,
          .kind = Kind::kDownload,
          .shown = std::move(shown)};
}

Decision RequestInterpreter::ServePostRequest(std::string_view request) {
  std::string& resource = session_.CurrentResource;
  CutPostResource(request, resource);
  Decision decision = {.action = Action::kRefusePost, .shown = "POST " + resource};
  resource = resource != "/" ? WithoutFirstCharacter(resource) : options_.FirstDefaultPage;
  if (!IsProgram(resource)) return decision;
  decision.kind = Kind::kProgram;
  decision.shown = "cgi-bin/" + resource;
  if (!options_.MayRunPrograms()) return decision;
  try {
    decision.body = ExtractPostBody(request);
    decision.resource = resource;
    decision.action = Action::kRunProgram;
  } catch (const BadRequest& fault) {
    decision.fault = fault.what();
    decision.action = Action::kNothing;
  }
  return decision;
}

// The eleventh entry is never tried. Where none exists the tenth is taken, which usually is empty.
std::string RequestInterpreter::FindDefaultPage() const {
  const std::size_t last = options_.DefaultPages.size() - 2;
  for (std::size_t i = 0; i < last; ++i) {
    const std::string& name = options_.DefaultPages[i];
    if (site_.HasFile(name)) return name;
  }
  return options_.DefaultPages[last];
}

}  // namespace ModWeb
