#pragma once

#include <algorithm>
#include <vector>

namespace bench {

/// Of at least one value.
inline double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

}  // namespace bench
