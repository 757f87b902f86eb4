#include "web/virtual_directory.h"

#include "settings/section.h"
#include "text/conversions.h"
#include "text/strings.h"

namespace ModWeb {
namespace {

constexpr std::string_view kSection = "VirturlDirInfo";

}  // namespace

VirtualDirectory ReadVirtualDirectory(const settings::Program& program) {
  const settings::Section settings(program, kSection);
  const auto isSet = [&](const char* key) {
    return text::ToBoolean(settings.Text(key)).value_or(false);
  };
  VirtualDirectory directory;
  directory.path = settings.Text("Path");
  if (directory.path.empty()) return directory;
  directory.noPrograms = isSet("optNoApp");
  directory.programs = isSet("optAppDone");
  directory.rights = settings::ToAccessRights(settings::ReadAccessRights(settings));
  return directory;
}

std::error_code SaveVirtualDirectory(const settings::Program& program,
                                     const VirtualDirectory& directory) {
  settings::Change change(program);
  const settings::SectionChange settings = change.In(kSection);
  settings.Write("Path", text::TrimBlanks(directory.path));
  settings.Write("optNoApp", text::BooleanText(directory.noPrograms));
  settings.Write("optAppDone", text::BooleanText(directory.programs));
  settings::WriteAccessRights(settings, directory.rights);
  return change.Save();
}

}  // namespace ModWeb
