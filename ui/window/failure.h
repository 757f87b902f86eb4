#pragma once

// Diagnoses a failed start, including which program, or which service of this one, has the port.

#include <optional>

#include "core/manager_view.h"
#include "core/start_diagnosis.h"
#include "ui/window/manager.h"

namespace ui {

/// None unless the outcome is a failed start with a known reason.
std::optional<core::Diagnosis> Diagnose(const core::Outcome& outcome, const Manager& manager);

}  // namespace ui
