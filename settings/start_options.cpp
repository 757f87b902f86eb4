#include "settings/start_options.h"

#include "settings/section.h"

namespace settings {

void StartOptions::Load(const Program& program) {
  settings::Load(Section(program, kSection), Describe());
}

Table StartOptions::Describe() {
  return {kSection,
          {{kAutoStartService, Form::kCheck, &autoStartService, {}, "chkAutoStartService"},
           {kStartInTaskBar, Form::kCheck, &startInTaskBar, {}, "chkShowInBar"}}};
}

}  // namespace settings
