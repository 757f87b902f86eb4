#include "bench/compare.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>

#include "bench/failure.h"
#include "bench/http_response.h"
#include "bench/load_client.h"
#include "bench/median.h"
#include "bench/page_client.h"
#include "bench/sockets.h"
#include "bench/stopwatch.h"
#include "bench/tarnwerk.h"
#include "bench/web_peers.h"

namespace bench {
namespace {

constexpr const char* kSmallFile = "small.txt";
constexpr std::size_t kSmallBytes = 2000;
constexpr const char* kLargeFile = "large.bin";
constexpr std::uint64_t kLargeBytes = std::uint64_t{1} << 30;
const Page kPage = {"page.html", 4000, "pictures", 40, 8192};
constexpr int kPageConnections = 6;
constexpr int kPagesPerRound = 40;

void FillSite(const Folder& folder) {
  folder.Write(std::string("wwwroot/") + kSmallFile, std::string(kSmallBytes, 'x'));
  folder.Write("wwwroot/" + kPage.name, std::string(kPage.bytes, 'p'));
  for (int i = 0; i < kPage.pictureCount; ++i) {
    folder.Write("wwwroot/" + kPage.pictures + "/" + std::to_string(i) + ".png",
                 std::string(kPage.pictureBytes, 'i'));
  }
  folder.Write(std::string("wwwroot/") + kLargeFile, "");
  std::filesystem::resize_file(folder.Path(std::string("wwwroot/") + kLargeFile), kLargeBytes);
}

// The whole answer to a request for a file; throws unless that is the file.
std::uint64_t AnswerBytes(std::uint16_t port, const std::string& file, std::uint64_t fileBytes,
                          bool isBare) {
  const Descriptor client = ConnectTo(port);
  SendAll(client.Number(), HttpResponse::Request(file, false));
  std::uint64_t bytes = 0;
  HttpResponse response;
  ReceiveAll(client.Number(), [&](std::string_view piece) {
    bytes += piece.size();
    if (!isBare) response.Take(piece);
  });
  Expect(isBare ? bytes == fileBytes : response.IsFound(fileBytes), "the answer is not " + file);
  return bytes;
}

bool AnswersWithHttp(const Server& server) {
  try {
    AnswerBytes(server.Port(), kSmallFile, kSmallBytes, false);
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

struct Site {
  Site() { FillSite(folder); }
  Folder folder;
};

// All of them serve the same files.
class Servers {
 public:
  explicit Servers(const std::string& program)
      : bare_(program, site_.folder), http_(HttpTarnwerk(program)) {
    if (AnswersWithHttp(http_)) {
      lineUp_.Add(http_, http_.Port());
    } else {
      std::puts("Tarnwerk does not answer with HTTP: left out");
    }
    lineUp_.Add(StartPeer<Nginx>(site_.folder));
    lineUp_.Add(StartPeer<Lighttpd>(site_.folder));
    lineUp_.Add(StartPeer<BusyboxHttpd>(site_.folder));
  }

  Contestant Bare() { return {&bare_, bare_.Port()}; }
  /// Those that answer with HTTP.
  const std::vector<Contestant>& Http() const { return lineUp_.All(); }

 private:
  Tarnwerk HttpTarnwerk(const std::string& program) {
    std::filesystem::create_directory_symlink(site_.folder.Path("wwwroot"),
                                              httpFolder_.Path("wwwroot"));
    return {
        program, httpFolder_, {.name = "Tarnwerk, HTTP", .webKeys = "Answers=HTTP\r\nSpeed=0\r\n"}};
  }

  Site site_;
  Folder httpFolder_;
  Tarnwerk bare_;
  Tarnwerk http_;
  LineUp lineUp_;
};

Row SmallFiles(Servers& servers, int clients) {
  const std::string name = "small file, " + std::to_string(clients) +
                           (clients == 1 ? " client" : " clients") + ": a second (CPU s per 1,000)";
  std::vector<Contestant> all = {servers.Bare()};
  all.insert(all.end(), servers.Http().begin(), servers.Http().end());
  return Compare({.name = name, .goal = "1.00 of nginx"}, all, [&](const Contestant& one) {
    const bool isBare = one.server == servers.Bare().server;
    const std::uint64_t bytes = AnswerBytes(one.port, kSmallFile, kSmallBytes, isBare);
    const LoadResult result = Run({one.port, HttpResponse::Request(kSmallFile, false), clients,
                                   std::chrono::milliseconds(500), bytes});
    Expect(result.failures == 0, std::to_string(result.failures) + " fetches failed");
    return Sample{result.fetchesPerSecond, static_cast<double>(result.fetches) / 1000};
  });
}

Row LargeFile(Servers& servers) {
  // Whoever reads it first pays for bringing it into memory.
  AnswerBytes(servers.Http().back().port, kLargeFile, kLargeBytes, false);
  return Compare({"1 GiB: MiB/s (CPU s per GB)"}, servers.Http(), [](const Contestant& one) {
    const double seconds =
        SecondsOf([&] { AnswerBytes(one.port, kLargeFile, kLargeBytes, false); });
    constexpr double kBytes = static_cast<double>(kLargeBytes);
    return Sample{kBytes / (1 << 20) / seconds, kBytes / 1e9};
  });
}

Row Pages(Servers& servers, bool keepsAlive) {
  const std::string name = std::string("page with 40 pictures of 8 KiB, 6 connections, ") +
                           (keepsAlive ? "kept alive" : "one per file") +
                           ": ms (CPU s per 1,000 files)";
  std::vector<Contestant> able;
  for (const Contestant& one : servers.Http()) {
    if (!keepsAlive || one.server->Name() != BusyboxHttpd::kName) able.push_back(one);
  }
  return Compare({.name = name, .decimals = 1}, able, [&](const Contestant& one) {
    std::vector<double> seconds;
    for (int i = 0; i < kPagesPerRound; ++i) {
      seconds.push_back(FetchPage(one.port, kPage, kPageConnections, keepsAlive));
    }
    const int files = kPagesPerRound * (kPage.pictureCount + 1);
    return Sample{Median(seconds) * 1000, files / 1000.0};
  });
}

}  // namespace

std::vector<Row> CompareWeb(const std::string& program) {
  Servers servers(program);
  std::vector<Row> rows;
  for (const int clients : {1, 16, 19}) rows.push_back(SmallFiles(servers, clients));
  rows.push_back(LargeFile(servers));
  for (const bool keepsAlive : {true, false}) rows.push_back(Pages(servers, keepsAlive));
  return rows;
}

}  // namespace bench
