#include "web/virtual_directory.h"

#include "settings/section.h"

namespace ModWeb {
namespace {

using settings::Form;
using settings::Refusal;

constexpr std::string_view kSection = "VirturlDirInfo";  // the settled spelling
constexpr std::string_view kPathKey = "Path";

}  // namespace

void VirtualDirectory::Load(const settings::Program& program) {
  const settings::Section section(program, kSection);
  if (section.Text(kPathKey).empty()) return settings::SetDefaults(program, Describe());
  settings::Load(section, Describe());
}

settings::Table VirtualDirectory::Describe() {
  const Refusal noPath{1, Refusal::If::kBlank, "目录不能为空！"};
  return {.section = kSection,
          .settings = {{kPathKey, Form::kText, &path, "", "txtDir", noPath},
                       {"optNoApp", Form::kBoolean, &appOptions[0], "True", "OptNoApp"},
                       {"optAppDone", Form::kBoolean, &appOptions[1], "False", "OptAppDone"},
                       {"Read", Form::kCheck, &rights[0], "1", "chkRead"},
                       {"Write", Form::kCheck, &rights[1], "0", "chkWrite"},
                       {"ContralAll", Form::kCheck, &rights[2], "0", "chkContralAll"}},
          .entriesAreTrimmed = true};
}

}  // namespace ModWeb
