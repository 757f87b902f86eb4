#pragma once

// Why a service did not start, with what the system knows of the port.

#include <optional>

#include "core/manager_view.h"
#include "core/start_diagnosis.h"

namespace ui {

/// None unless it is a failed start whose reason is known.
std::optional<core::Diagnosis> Diagnose(const core::Outcome& outcome);

}  // namespace ui
