#include "bench/table.h"

#include <array>
#include <cstdio>
#include <string>

namespace bench {
namespace {

constexpr const char* kOurName = "Tarnwerk";

// With commas between thousands.
std::string Number(double value, int decimals) {
  std::array<char, 64> buffer;
  std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, value);
  std::string text = buffer.data();
  std::size_t end = text.find('.');
  if (end == std::string::npos) end = text.size();
  for (std::size_t i = end; i > 3 && i - 3 > 0; i -= 3) text.insert(i - 3, ",");
  return text;
}

std::string Value(const Figure& figure, const Entry& entry) {
  if (!entry.median) return "failed";
  std::string text = Number(*entry.median, figure.decimals);
  if (entry.processorSeconds) text += " (" + Number(*entry.processorSeconds, 3) + ")";
  return text;
}

bool IsOurs(const Entry& entry) { return entry.server.starts_with(kOurName); }

// What follows our name: "Tarnwerk, HTTP" is "HTTP " in our own column.
std::string Label(const Entry& entry) {
  if (!IsOurs(entry)) return entry.server + " ";
  const std::size_t comma = entry.server.find(", ");
  return comma == std::string::npos ? "" : entry.server.substr(comma + 2) + " ";
}

std::string Cell(const Row& row, bool ours) {
  std::string cell;
  for (const Entry& entry : row.entries) {
    if (IsOurs(entry) != ours) continue;
    if (!cell.empty()) cell += "; ";
    cell += Label(entry) + Value(row.figure, entry);
  }
  return cell;
}

}  // namespace

void PrintTable(const std::vector<Row>& rows) {
  std::puts("| figure | Tarnwerk | others | goal |\n|---|---|---|---|");
  for (const Row& row : rows) {
    std::printf("| %s | %s | %s | %s |\n", row.figure.name.c_str(), Cell(row, true).c_str(),
                Cell(row, false).c_str(), row.figure.goal.c_str());
  }
}

}  // namespace bench
