// How Tarnwerk's times grow with what it has to do, and how long another client waits meanwhile, as
// a table in Markdown.
//
// growth <Tarnwerk> [files|clients|messages|log]...
//
// The other client is an FTP session that asks NOOP after NOOP.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "bench/failure.h"
#include "bench/ftp_load.h"
#include "bench/http_response.h"
#include "bench/load_client.h"
#include "bench/mail_load.h"
#include "bench/median.h"
#include "bench/stopwatch.h"
#include "bench/tarnwerk.h"

namespace {

using bench::Folder;
using bench::Median;
using bench::Tarnwerk;

constexpr const char* kSmallFile = "small.txt";
constexpr std::size_t kSmallBytes = 2000;
constexpr std::uint64_t kMebibyte = 1U << 20;
constexpr int kRounds = 5;

// The median of what `measure` returns, and the slowest answer in all rounds: a row of the table.
void Measure(const Tarnwerk& tarnwerk, const std::string& name, const char* unit,
             const std::function<double()>& measure) {
  std::vector<double> values;
  double slowest = 0;
  for (int round = 0; round < kRounds; ++round) {
    slowest = std::max(
        slowest, bench::SlowestAnswer(tarnwerk.FtpPort(), [&] { values.push_back(measure()); }));
  }
  std::printf("| %s | %.4g %s | %.1f |\n", name.c_str(), Median(values), unit, slowest * 1000);
}

std::string Thousands(std::uint64_t number) {
  std::string text = std::to_string(number);
  for (std::size_t i = text.size(); i > 3; i -= 3) text.insert(i - 3, ",");
  return text;
}

std::string Size(std::uint64_t bytes) {
  return bytes < kMebibyte ? Thousands(bytes >> 10) + " KiB" : Thousands(bytes >> 20) + " MiB";
}

void GrowFiles(const std::string& program) {
  constexpr int kMost = 1000000;
  constexpr double kLongestFill = 20;  // for a tenth of the most
  const Folder folder(Folder::Place::kMemory);
  const Tarnwerk tarnwerk(program, folder);
  int before = 0;
  double fill = 0;
  for (int files = 100; files <= kMost && fill < kLongestFill; files *= 10) {
    fill = bench::SecondsOf([&] { bench::FillFolder(folder, "many", before, files); });
    before = files;
    const auto count = static_cast<std::uint64_t>(files);
    Measure(tarnwerk, "LIST of " + Thousands(count) + " files", "µs per file",
            [&] { return bench::ListSeconds(tarnwerk.FtpPort(), "many", count) * 1e6 / files; });
  }
}

void GrowClients(const std::string& program) {
  constexpr std::uint64_t kBytes = 32 * kMebibyte;
  const Folder folder(Folder::Place::kMemory);
  folder.Write(std::string("wwwroot/") + kSmallFile, std::string(kSmallBytes, 'x'));
  folder.Write("ftproot/large", std::string(kBytes, 'x'));
  const Tarnwerk tarnwerk(program, folder);
  for (const int clients : {1, 2, 4, 8, 16, 19}) {
    Measure(tarnwerk, "small file by " + std::to_string(clients), "µs per file", [&] {
      const bench::LoadResult result =
          bench::Run({tarnwerk.WebPort(), bench::HttpResponse::Request(kSmallFile, false), clients,
                      std::chrono::milliseconds(300), kSmallBytes});
      bench::Expect(result.failures == 0, "fetches failed");
      return 1e6 / result.fetchesPerSecond;
    });
  }
  // The other client has the nineteenth connection.
  for (const int clients : {1, 2, 4, 8, 16, 18}) {
    Measure(tarnwerk, "RETR by " + std::to_string(clients), "ms per MiB", [&] {
      const std::vector<double> seconds = bench::RetrieveTogether(
          tarnwerk.FtpPort(), static_cast<std::size_t>(clients), "large", kBytes);
      const double last = *std::max_element(seconds.begin(), seconds.end());
      return last * 1e3 / (clients * static_cast<double>(kBytes / kMebibyte));
    });
  }
}

void GrowMessages(const std::string& program) {
  const Folder folder;
  const Tarnwerk tarnwerk(program, folder);
  for (std::uint64_t bytes = 1024; bytes <= 256 * kMebibyte; bytes *= 8) {
    const std::string sent = bench::SentMessage(bytes);
    const double mebibytes = static_cast<double>(bytes) / kMebibyte;
    Measure(tarnwerk, "message of " + Size(bytes) + " received", "ms per MiB", [&] {
      bench::EmptyMailbox(tarnwerk, 1);
      const double seconds =
          bench::SendSeconds(tarnwerk.SmtpPort(), sent, 1, bench::Recipients::kOnce);
      bench::Expect(std::filesystem::file_size(tarnwerk.Message(1)) == sent.size(),
                    "a message is wrong");
      return seconds * 1e3 / mebibytes;
    });
    Measure(tarnwerk, "message of " + Size(bytes) + " collected", "ms per MiB", [&] {
      bench::FillMailbox(tarnwerk, 1, bench::MessageText(bytes));
      return bench::CollectSeconds(tarnwerk.Pop3Port(), 1, bytes, bench::MessageEnd::kTarnwerks) *
             1e3 / mebibytes;
    });
  }
}

// A request that is refused is logged.
void GrowLog(const std::string& program) {
  const Folder folder;
  const Tarnwerk tarnwerk(program, folder);
  const std::string log = folder.Path("Web.log");
  for (const std::uint64_t mebibytes : {0, 1, 32, 1024}) {
    folder.Write("Web.log", "");
    std::filesystem::resize_file(log, mebibytes * kMebibyte);
    Measure(tarnwerk, "request logged in " + Size(mebibytes * kMebibyte), "µs per request", [&] {
      const auto before = std::filesystem::file_size(log);
      const bench::LoadResult result = bench::Run(
          {tarnwerk.WebPort(), "POST /x HTTP/1.0\r\n\r\n", 1, std::chrono::milliseconds(300), 0});
      bench::Expect(std::filesystem::file_size(log) > before, "no request was logged");
      return 3e5 / static_cast<double>(result.fetches + result.failures);
    });
  }
}

using Part = void (*)(const std::string&);
const std::vector<std::pair<std::string, Part>> kParts = {
    {"files", GrowFiles}, {"clients", GrowClients}, {"messages", GrowMessages}, {"log", GrowLog}};

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount < 2) {
    std::fputs("usage: growth <Tarnwerk> [files|clients|messages|log]...\n", stderr);
    return 2;
  }
  const std::vector<std::string> wanted(arguments + 2, arguments + argumentCount);
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  return bench::RunOrReport([&] {
    std::puts("| what | time | slowest answer to another client, ms |\n|---|---|---|");
    for (const auto& [name, part] : kParts) {
      const bool isWanted =
          wanted.empty() || std::find(wanted.begin(), wanted.end(), name) != wanted.end();
      if (isWanted) part(arguments[1]);
    }
  });
}
