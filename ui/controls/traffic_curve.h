#pragma once

// A small curve of the traffic of the last minutes, the services stacked in their colours.

#include <wx/window.h>

#include "core/traffic_history.h"

namespace ui {

class TrafficCurve : public wxWindow {
 public:
  explicit TrafficCurve(wxWindow* parent);

  void ShowSamples(const std::deque<core::TrafficHistory::Sample>& samples);

 private:
  void OnPaint();
  void PaintLegend(wxDC& screen) const;

  std::deque<core::TrafficHistory::Sample> samples_;
};

}  // namespace ui
