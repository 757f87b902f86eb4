#include "web/virtual_directory.h"

#include "core/conversions.h"
#include "core/paths.h"
#include "core/settings_section.h"

namespace ModWeb {
namespace {

constexpr std::string_view kSection = "VirturlDirInfo";

}  // namespace

VirtualDirectory ReadVirtualDirectory(const core::Program& program) {
  const core::SettingsSection settings(program, kSection);
  const auto isSet = [&](const char* key) {
    return core::ToBoolean(settings.Text(key)).value_or(false);
  };
  VirtualDirectory directory;
  directory.path = settings.Text("Path");
  if (directory.path.empty()) return directory;
  directory.noPrograms = isSet("optNoApp");
  directory.programs = isSet("optAppDone");
  directory.rights = core::ToAccessRights(core::ReadAccessRights(settings));
  return directory;
}

std::error_code SaveVirtualDirectory(const core::Program& program,
                                     const VirtualDirectory& directory) {
  core::SettingsChange change(program);
  const core::SectionChange settings = change.In(kSection);
  settings.Write("Path", core::TrimBlanks(directory.path));
  settings.Write("optNoApp", core::BooleanText(directory.noPrograms));
  settings.Write("optAppDone", core::BooleanText(directory.programs));
  core::WriteAccessRights(settings, directory.rights);
  return change.Save();
}

}  // namespace ModWeb
