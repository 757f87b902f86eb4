#pragma once

// Figures as a table in Markdown: a row for each, with Tarnwerk's values and its peers'.

#include <vector>

#include "bench/comparison.h"

namespace bench {

void PrintTable(const std::vector<Row>& rows);

}  // namespace bench
