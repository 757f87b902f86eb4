#pragma once

// The captions of the buttons that mend a failed start.

#include "core/start_diagnosis.h"

namespace ui {

/// Without an access key. Empty if there is no remedy.
inline const char* CaptionOf(core::Diagnosis::Remedy remedy) {
  using Remedy = core::Diagnosis::Remedy;
  switch (remedy) {
    case Remedy::kChangePort:
      return "更改端口...";
    case Remedy::kCopyCommand:
      return "复制命令";
    case Remedy::kRetry:
      return "再试一次";
    case Remedy::kNone:
      break;
  }
  return "";
}

/// The same with the access key of a service's page.
inline const char* CaptionWithKeyOf(core::Diagnosis::Remedy remedy) {
  using Remedy = core::Diagnosis::Remedy;
  switch (remedy) {
    case Remedy::kChangePort:
      return "更改端口(&Y)...";
    case Remedy::kCopyCommand:
      return "复制命令(&Y)";
    case Remedy::kRetry:
      return "再试一次(&Y)";
    case Remedy::kNone:
      break;
  }
  return "";
}

}  // namespace ui
