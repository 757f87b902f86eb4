#include "web/http/response.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "text/code_page.h"
#include "web/http/http_date.h"
#include "web/http/url_encoding.h"
#include "web/not_found_page.h"

namespace ModWeb {
namespace {

using net::ActivityEnd;

struct Status {
  int number;
  std::string_view reason;
  std::string_view told = {};  // to the visitor, for one who is not served
};

constexpr auto kStatuses = std::to_array<Status>({
    {200, "OK"},
    {206, "Partial Content"},
    {301, "Moved Permanently", "请看新的地址。"},
    {302, "Found", "请看新的地址。"},
    {304, "Not Modified"},
    {400, "Bad Request", "浏览器发来的请求有错误。"},
    {403, "Forbidden", "这里的内容不对外开放。"},
    {404, "Not Found"},
    {405, "Method Not Allowed", "这里不能这样访问。"},
    {413, "Content Too Large", "提交的内容太大。"},
    {414, "URI Too Long", "地址太长。"},
    {416, "Range Not Satisfiable", "文件没有这么长。"},
    {431, "Request Header Fields Too Large", "浏览器发来的请求太长。"},
    {500, "Internal Server Error", "服务器出了问题，请稍后再试。"},
    {501, "Not Implemented", "服务器不支持这种访问。"},
    {503, "Service Unavailable", "服务器正忙，请稍后再试。"},
});

const Status& Find(int number) {
  const auto* const found = std::find_if(kStatuses.begin(), kStatuses.end(),
                                         [&](const Status& each) { return each.number == number; });
  static constexpr Status kUnknown = {0, "Unknown", ""};
  return found == kStatuses.end() ? kUnknown : *found;
}

// The clock moves once a second, and many answers go out in one.
const std::string& DateNow() {
  static std::chrono::sys_seconds last;
  static std::string text;
  const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
  if (text.empty() || now != last) text = HttpDate(last = now);
  return text;
}

std::string PageOf(const Status& status) {
  const std::string title = std::to_string(status.number) + " " + std::string(status.reason);
  return "<!DOCTYPE html>\n<html lang=\"zh-CN\"><head><meta charset=\"utf-8\">"
         "<meta name=\"viewport\" content=\"width=device-width\">"
         "<meta name=\"color-scheme\" content=\"light dark\"><title>" +
         title +
         "</title></head><body style=\"font-family:sans-serif;margin:10vh auto;max-width:30em;"
         "padding:0 1em\"><h1>" +
         title + "</h1><p>" + std::string(status.told) + "</p></body></html>\n";
}

// What most answers have in bytes.
constexpr std::size_t kUsualFields = 255;
constexpr std::size_t kUsualHead = 512;
constexpr std::uint64_t kSmallBody = 16384;

bool HasLength(int status) { return status != 204 && status != 304; }

}  // namespace

bool HasBody(int status) { return HasLength(status) && status != 205; }

void HttpResponse::AddField(std::string_view name, std::string_view value) {
  if (fields.empty()) fields.reserve(kUsualFields);
  fields.append(name).append(": ").append(value).append("\r\n");
}

void HttpResponse::SetText(std::string_view type, std::string text) {
  AddField("Content-Type", type);
  body.clear();
  body.push_back({.text = std::move(text)});
}

std::uint64_t HttpResponse::Length() const {
  std::uint64_t length = 0;
  for (const Piece& piece : body) length += piece.text.size() + piece.range.size;
  return length;
}

std::string HeadOf(const HttpResponse& response, bool keepsAlive) {
  std::string head = "HTTP/1.1 ";
  // With room for a small body behind it.
  head.reserve(kUsualHead + static_cast<std::size_t>(std::min(response.Length(), kSmallBody)));
  head.append(std::to_string(response.status)).append(" ");
  head.append(response.reason.empty() ? Find(response.status).reason
                                      : std::string_view(response.reason));
  head.append("\r\nDate: ").append(DateNow()).append("\r\n").append(response.fields);
  head.append("X-Content-Type-Options: nosniff\r\n");
  if (HasLength(response.status)) {
    head.append("Content-Length: ").append(std::to_string(response.Length())).append("\r\n");
  }
  return head.append(keepsAlive ? "Connection: keep-alive\r\n\r\n" : "Connection: close\r\n\r\n");
}

HttpResponse Refused(int status) {
  HttpResponse response = {.status = status, .end = ActivityEnd::kFailed};
  if (status == 404) {
    response.end = ActivityEnd::kNotFound;
    response.SetText("text/html", text::ToSystem(BuildNotFoundPage()));
    return response;
  }
  if (status == 403) response.end = ActivityEnd::kRefused;
  response.SetText("text/html; charset=utf-8", PageOf(Find(status)));
  return response;
}

HttpResponse Redirected(const std::string& path, const std::string& query) {
  HttpResponse response = {.status = 301};
  response.AddField("Location", EncodeUrlPath(path) + query);
  response.SetText("text/html; charset=utf-8", PageOf(Find(response.status)));
  return response;
}

}  // namespace ModWeb
