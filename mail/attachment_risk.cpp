#include "mail/attachment_risk.h"

#include <algorithm>
#include <array>

#include "mail/ascii_case.h"

namespace ModMail {
namespace {

constexpr std::array<std::string_view, 36> kHarmless = {
    "txt",  "log", "csv",  "pdf",  "jpg",  "jpeg", "png", "gif", "bmp", "webp", "tif", "tiff",
    "heic", "ico", "mp3",  "wav",  "ogg",  "flac", "m4a", "aac", "mp4", "mkv",  "avi", "mov",
    "webm", "3gp", "docx", "xlsx", "pptx", "odt",  "ods", "odp", "ics", "vcf",  "eml", "epub"};

constexpr std::array<std::string_view, 68> kExecutable = {
    "exe",        "com",     "bat",  "cmd",        "scr",       "pif",
    "msi",        "msp",     "mst",  "msu",        "cpl",       "dll",
    "ocx",        "sys",     "drv",  "js",         "jse",       "vbs",
    "vbe",        "vb",      "wsf",  "wsh",        "ws",        "wsc",
    "sct",        "ps1",     "psm1", "psd1",       "ps1xml",    "psc1",
    "lnk",        "url",     "reg",  "inf",        "hta",       "chm",
    "hlp",        "jar",     "jnlp", "class",      "gadget",    "application",
    "appref-ms",  "appx",    "msix", "msc",        "iso",       "img",
    "vhd",        "vhdx",    "scf",  "library-ms", "search-ms", "settingcontent-ms",
    "xll",        "desktop", "sh",   "bash",       "run",       "bin",
    "appimage",   "deb",     "rpm",  "py",         "pl",        "rb",
    "flatpakref", "command"};

template <class Extensions>
bool Has(const Extensions& extensions, std::string_view extension) {
  return std::any_of(extensions.begin(), extensions.end(),
                     [extension](std::string_view each) { return EqualAscii(each, extension); });
}

}  // namespace

AttachmentRisk RiskOf(std::string_view fileName) {
  const std::size_t dot = fileName.rfind('.');
  if (dot == std::string_view::npos) return AttachmentRisk::kUnknown;
  const std::string_view extension = fileName.substr(dot + 1);
  if (Has(kExecutable, extension)) return AttachmentRisk::kExecutes;
  return Has(kHarmless, extension) ? AttachmentRisk::kHarmless : AttachmentRisk::kUnknown;
}

}  // namespace ModMail
