#pragma once

// The parts of the comparison with other servers. Each starts its servers, ends them, and returns a
// row per figure.

#include <string>
#include <vector>

#include "bench/comparison.h"

namespace bench {

/// `program` is the path of Tarnwerk's executable.
std::vector<Row> CompareWeb(const std::string& program);
std::vector<Row> CompareFtp(const std::string& program);
std::vector<Row> CompareMail(const std::string& program);
/// Start, and memory at rest.
std::vector<Row> CompareStart(const std::string& program);

}  // namespace bench
