#include <chrono>
#include <thread>

#include "bench/compare.h"
#include "bench/tarnwerk.h"
#include "bench/web_peers.h"

namespace bench {
namespace {

constexpr int kStarts = 9;

Row Start(const LineUp& lineUp) {
  const Figure figure = {
      .name = "from start to listening: ms", .decimals = 1, .rounds = kStarts, .goal = "50"};
  return Compare(figure, lineUp.All(), [](const Contestant& one) {
    one.server->Stop();
    one.server->Start();
    return Sample{one.server->StartSeconds() * 1000, 0};
  });
}

Row Memory(const LineUp& lineUp, const std::string& name, std::uint64_t Usage::*kibibytes) {
  const Figure figure = {.name = name, .decimals = 1, .rounds = 1};
  return Compare(figure, lineUp.All(), [&](const Contestant& one) {
    return Sample{static_cast<double>(one.server->Used().*kibibytes) / 1024, 0};
  });
}

}  // namespace

std::vector<Row> CompareStart(const std::string& program) {
  const Folder folder;
  folder.Write("wwwroot/small.txt", "hello");
  LineUp lineUp;
  lineUp.Add(std::make_unique<Tarnwerk>(program, folder));
  lineUp.Add(StartPeer<Nginx>(folder));
  lineUp.Add(StartPeer<Lighttpd>(folder));
  lineUp.Add(StartPeer<BusyboxHttpd>(folder));
  std::vector<Row> rows = {Start(lineUp)};
  std::this_thread::sleep_for(std::chrono::seconds(1));  // what they do after their start
  rows.push_back(Memory(lineUp, "resident memory after the start: MiB", &Usage::resident));
  rows.push_back(Memory(lineUp, "anonymous memory of it: MiB", &Usage::anonymous));
  return rows;
}

}  // namespace bench
