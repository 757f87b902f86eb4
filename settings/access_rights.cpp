#include "settings/access_rights.h"

#include "text/conversions.h"

namespace settings {
namespace {

constexpr const char* kRead = "Read";
constexpr const char* kWrite = "Write";
constexpr const char* kControlAll = "ContralAll";  // the settled spelling

bool IsSet(const std::string& text) { return text::ToBoolean(text).value_or(false); }

}  // namespace

AccessRightsTexts ReadAccessRights(const Section& settings) {
  return {settings.Text(kRead), settings.Text(kWrite), settings.Text(kControlAll)};
}

AccessRights ToAccessRights(const AccessRightsTexts& texts) {
  return {IsSet(texts[0]), IsSet(texts[1]), IsSet(texts[2])};
}

void WriteAccessRights(const SectionChange& settings, const AccessRights& rights) {
  settings.Write(kRead, text::CheckText(rights.read));
  settings.Write(kWrite, text::CheckText(rights.write));
  settings.Write(kControlAll, text::CheckText(rights.controlAll));
}

}  // namespace settings
