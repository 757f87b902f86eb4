#include "ui/domain_questions.h"

namespace ui {

std::optional<std::string> AskDomain(wxWindow*, const core::Program&, core::ServiceKind) {
  return std::nullopt;
}

}  // namespace ui
