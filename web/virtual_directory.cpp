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

void SaveVirtualDirectory(const core::Program& program, const VirtualDirectory& directory) {
  const core::SettingsSection settings(program, kSection);
  settings.Write("Path", core::TrimBlanks(directory.path));
  settings.Write("optNoApp", core::BooleanText(directory.noPrograms));
  settings.Write("optAppDone", core::BooleanText(directory.programs));
  core::WriteAccessRights(settings, directory.rights);
}

}  // namespace ModWeb
