// Tarnwerk against every server that is installed, as a table in Markdown.
//
// compare <Tarnwerk> [web|ftp|mail|start]...
//
// In parentheses: processor time of all processes of the server, in seconds.

#include "bench/compare.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "bench/failure.h"
#include "bench/table.h"

namespace {

using Part = std::vector<bench::Row> (*)(const std::string&);

const std::vector<std::pair<std::string, Part>> kParts = {{"web", bench::CompareWeb},
                                                          {"ftp", bench::CompareFtp},
                                                          {"mail", bench::CompareMail},
                                                          {"start", bench::CompareStart}};

void CompareAll(const std::string& program, const std::vector<std::string>& wanted) {
  bench::AdoptOrphans();
  std::vector<bench::Row> rows;
  for (const auto& [name, part] : kParts) {
    const bool isWanted =
        wanted.empty() || std::find(wanted.begin(), wanted.end(), name) != wanted.end();
    if (!isWanted) continue;
    const std::vector<bench::Row> more = part(program);
    rows.insert(rows.end(), more.begin(), more.end());
  }
  bench::PrintTable(rows);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) {
    std::fputs("usage: compare <Tarnwerk> [web|ftp|mail|start]...\n", stderr);
    return 2;
  }
  return bench::RunOrReport([&] {
    CompareAll(arguments[1], {arguments + 2, arguments + argumentCount});
  });
}
