#include "web/http/folder_page.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/traffic_text.h"
#include "text/date_time.h"
#include "web/http/html_text.h"
#include "web/http/media_type.h"
#include "web/http/url_encoding.h"

namespace ModWeb {
namespace {

constexpr std::string_view kRootName = "主页";
constexpr std::string_view kEntriesMark = "{{entries}}";

// The parts of the page that are there several times, or not always.
constexpr const char* kStyleLink = R"(<link rel="stylesheet" href="/style.css">
)";
constexpr std::string_view kTrail = R"(<nav class="fl-trail" aria-label="位置">{{steps}}</nav>
)";
constexpr std::string_view kStep = R"(<a href="{{link}}"><bdi>{{name}}</bdi></a><span>›</span>)";
constexpr std::string_view kNote = R"(<p class="fl-note">内容太多，这里只列出 {{count}} 项。</p>
)";
constexpr std::string_view kSortLink = R"(<a href="{{query}}"{{mark}}>{{caption}}{{arrow}}</a>
)";
constexpr std::string_view kWayUp =
    R"(<li class="fl-up"><a href="../">{{picture}}<span class="fl-name">上一级文件夹</span></a></li>
)";
constexpr std::string_view kEntry =
    R"(<li><a href="{{link}}">{{picture}}<span class="fl-name"><bdi>{{name}}</bdi></span>)"
    R"(<span class="fl-facts"><span class="fl-size">{{size}}</span>)"
    R"(<span class="fl-date">{{date}}</span></span></a></li>
)";
constexpr std::string_view kIcon =
    R"(<span class="fl-icon fl-{{kind}}"><svg aria-hidden="true"><use href="#fl-{{kind}}"/></svg>)"
    R"(</span>)";
constexpr std::string_view kPreview =
    R"(<img src="{{link}}" alt="" width="44" height="44" loading="lazy" decoding="async">)";

// What the beginning of a media type tells of a file. The first match counts.
struct Kind {
  std::string_view type;
  std::string_view name;
};

constexpr std::array kKinds = {
    Kind{"image/", "image"},
    Kind{"video/", "video"},
    Kind{"audio/", "audio"},
    Kind{"text/html", "code"},
    Kind{"text/css", "code"},
    Kind{"text/javascript", "code"},
    Kind{"text/", "text"},
    Kind{"application/json", "code"},
    Kind{"application/xml", "code"},
    Kind{"application/xhtml", "code"},
    Kind{"application/pdf", "pdf"},
    Kind{"application/msword", "text"},
    Kind{"application/rtf", "text"},
    Kind{"application/vnd.ms-", "text"},
    Kind{"application/vnd.oasis.", "text"},
    Kind{"application/vnd.openxml", "text"},
    Kind{"application/epub", "text"},
    Kind{"application/vnd.android.package", "app"},
    Kind{"application/vnd.debian", "app"},
    Kind{"application/vnd.microsoft.portable", "app"},
    Kind{"application/x-ms", "app"},
    Kind{"application/zip", "archive"},
    Kind{"application/gzip", "archive"},
    Kind{"application/zstd", "archive"},
    Kind{"application/vnd.rar", "archive"},
    Kind{"application/x-7z", "archive"},
    Kind{"application/x-tar", "archive"},
    Kind{"application/x-xz", "archive"},
    Kind{"application/x-bzip", "archive"},
};

std::string_view KindOf(std::string_view type) {
  const auto* const kind = std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& known) {
    return type.starts_with(known.type);
  });
  return kind == kKinds.end() ? "file" : kind->name;
}

// Whether browsers show such a picture, and it is small enough to be loaded just for its preview.
bool HasPreview(const ListedEntry& file, std::string_view type) {
  constexpr std::uint64_t kLargest = std::uint64_t{4} << 20;
  constexpr std::array<std::string_view, 6> kTypes = {"image/avif", "image/gif",     "image/jpeg",
                                                      "image/png",  "image/svg+xml", "image/webp"};
  const std::string_view bare = type.substr(0, type.find(';'));
  if (file.size == 0 || file.size > kLargest) return false;
  return std::find(kTypes.begin(), kTypes.end(), bare) != kTypes.end();
}

std::string Icon(std::string_view kind) { return FillPage(kIcon, {{"kind", std::string(kind)}}); }

std::string PictureOf(const ListedEntry& entry, const std::string& link) {
  if (entry.isFolder) return Icon("folder");
  const std::string type = MediaTypeOf(TypeByName(entry.name), {}, true);
  return HasPreview(entry, type) ? FillPage(kPreview, {{"link", link}}) : Icon(KindOf(type));
}

// To the minute.
std::string DateOf(const ListedEntry& entry) {
  constexpr std::string_view kShown = "YYYY-MM-DD HH:MM";
  return text::DateTimeText(entry.modified).substr(0, kShown.size());
}

// The folders above the last one of `urlPath`, each with a link.
std::string Trail(std::string_view urlPath) {
  std::string link = "/";
  std::string name(kRootName);
  std::string trail;
  while (true) {
    urlPath.remove_prefix(std::min(urlPath.find_first_not_of('/'), urlPath.size()));
    if (urlPath.empty()) break;
    trail += FillPage(kStep, {{"link", link}, {"name", name}});
    const std::string_view folder = urlPath.substr(0, urlPath.find('/'));
    link.append(EncodeUrlPath(folder)).append("/");
    name = ShownName(folder);
    urlPath.remove_prefix(folder.size());
  }
  if (trail.empty()) return {};
  return FillPage(kTrail, {{"steps", trail}});
}

bool IsRoot(std::string_view urlPath) {
  return urlPath.find_first_not_of('/') == std::string_view::npos;
}

// Escaped.
std::string TitleOf(std::string_view urlPath) {
  if (IsRoot(urlPath)) return std::string(kRootName);
  urlPath = urlPath.substr(0, urlPath.find_last_not_of('/') + 1);
  return ShownName(urlPath.substr(urlPath.find_last_of('/') + 1));
}

// The link that sorts by `by`; if that is the order already, the link that turns it round.
std::string SortLink(std::string_view caption, ListOrder::By by, const ListOrder& current) {
  const bool isCurrent = current.by == by;
  // The largest and the newest are what one looks for.
  const bool isDescending = isCurrent ? !current.isDescending : by != ListOrder::By::kName;
  const std::string_view arrow = current.isDescending ? " ↓" : " ↑";
  return FillPage(kSortLink, {{"query", EscapeHtml(OrderQuery({by, isDescending}))},
                              {"mark", isCurrent ? R"( aria-current="true")" : ""},
                              {"caption", std::string(caption)},
                              {"arrow", isCurrent ? std::string(arrow) : ""}});
}

std::string SortLinks(const ListOrder& current) {
  using By = ListOrder::By;
  return SortLink("名称", By::kName, current) + SortLink("大小", By::kSize, current) +
         SortLink("日期", By::kDate, current);
}

std::string CountText(const FolderPageFrame& frame) {
  std::string text;
  if (frame.folders > 0) text += std::to_string(frame.folders) + " 个文件夹";
  if (frame.folders > 0 && frame.files > 0) text += "，";
  if (frame.files > 0) text += std::to_string(frame.files) + " 个文件";
  return text.empty() ? "这个文件夹是空的" : text;
}

std::string Note(const FolderPageFrame& frame) {
  if (frame.cutAt == 0) return {};
  return FillPage(kNote, {{"count", std::to_string(frame.cutAt)}});
}

}  // namespace

FolderPage::FolderPage(const FolderPageFrame& frame) {
  const std::string_view page = FolderPageTemplate();
  const std::size_t entries = page.find(kEntriesMark);
  end_ = page.substr(entries + kEntriesMark.size());
  page_ = FillPage(page.substr(0, entries), {{"own", frame.hasStyle ? "" : "fl-own"},
                                             {"title", TitleOf(frame.urlPath)},
                                             {"style", frame.hasStyle ? kStyleLink : ""},
                                             {"trail", Trail(frame.urlPath)},
                                             {"count", CountText(frame)},
                                             {"note", Note(frame)},
                                             {"sort", SortLinks(frame.order)}});
  if (!IsRoot(frame.urlPath)) page_ += FillPage(kWayUp, {{"picture", Icon("back")}});
}

// "./" keeps a name with a colon from being taken for a scheme.
void FolderPage::Add(const ListedEntry& entry) {
  const std::string link = "./" + EncodeUrlPath(entry.name) + (entry.isFolder ? "/" : "");
  page_ += FillPage(kEntry, {{"link", link},
                             {"picture", PictureOf(entry, link)},
                             {"name", ShownName(entry.name)},
                             {"size", entry.isFolder ? "" : core::ByteText(entry.size)},
                             {"date", DateOf(entry)}});
}

std::string FolderPage::Finish() {
  page_ += end_;
  return std::move(page_);
}

}  // namespace ModWeb
