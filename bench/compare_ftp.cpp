#include <algorithm>

#include "bench/compare.h"
#include "bench/ftp_load.h"
#include "bench/ftp_peers.h"
#include "bench/tarnwerk.h"

namespace bench {
namespace {

constexpr std::uint64_t kMebibyte = 1U << 20;
constexpr std::uint64_t kAloneBytes = 256 * kMebibyte;
constexpr std::uint64_t kTogetherBytes = 64 * kMebibyte;
constexpr std::uint64_t kSmallBytes = 4096;
constexpr std::size_t kTogether = 8;

struct Files {
  Files() {
    folder.Write("ftproot/alone", std::string(kAloneBytes, 'x'));
    folder.Write("ftproot/together", std::string(kTogetherBytes, 'x'));
    folder.Write("ftproot/small", std::string(kSmallBytes, 'x'));
    CreateUploadFolder(folder);
    FillFolder(folder, "list10000", 0, 10000);
    FillFolder(folder, "list100000", 0, 100000);
  }
  Folder folder{Folder::Place::kMemory};
};

class Servers {
 public:
  explicit Servers(const std::string& program) : ours_(program, files_.folder) {
    lineUp_.Add(ours_, ours_.FtpPort());
    lineUp_.Add(StartPeer<Vsftpd>(files_.folder));
    lineUp_.Add(StartPeer<PureFtpd>(files_.folder));
    lineUp_.Add(StartPeer<Pyftpdlib>(files_.folder));
  }

  const std::vector<Contestant>& All() const { return lineUp_.All(); }
  const Folder& Root() const { return files_.folder; }

 private:
  Files files_;
  Tarnwerk ours_;
  LineUp lineUp_;
};

Sample Speed(std::uint64_t bytes, double seconds) {
  return {static_cast<double>(bytes / kMebibyte) / seconds, static_cast<double>(bytes) / 1e9};
}

std::string Name(const std::string& command, std::size_t clients) {
  return command + ", " + (clients == 1 ? "1 client" : std::to_string(clients) + " clients") +
         ": MiB/s (CPU s per GB)";
}

Row Retrieve(const Servers& servers, std::size_t clients) {
  const std::uint64_t bytes = clients == 1 ? kAloneBytes : kTogetherBytes;
  const std::string file = clients == 1 ? "alone" : "together";
  return Compare({Name("RETR", clients)}, servers.All(), [&](const Contestant& one) {
    const std::vector<double> seconds = RetrieveTogether(one.port, clients, file, bytes);
    return Speed(bytes * clients, *std::max_element(seconds.begin(), seconds.end()));
  });
}

Row Store(const Servers& servers, std::size_t clients) {
  const std::uint64_t bytes = clients == 1 ? kAloneBytes : kTogetherBytes;
  return Compare({Name("STOR", clients)}, servers.All(), [&](const Contestant& one) {
    return Speed(bytes * clients, StoreTogether(one.port, clients, bytes, servers.Root()));
  });
}

Row SmallFiles(const Servers& servers) {
  const Figure figure = {.name = "PASV and RETR of 4 KiB: a second (CPU s per 1,000)",
                         .goal = "3,000"};
  return Compare(figure, servers.All(), [](const Contestant& one) {
    const int count = RetrieveOften(one.port, "small", kSmallBytes, 1);
    return Sample{static_cast<double>(count), count / 1000.0};
  });
}

Row List(const Servers& servers, int files, const std::string& name, const std::string& goal) {
  const Figure figure = {.name = "LIST of " + name + " files: ms (CPU s per 1,000 files)",
                         .decimals = 1,
                         .goal = goal};
  return Compare(figure, servers.All(), [&](const Contestant& one) {
    const double seconds =
        ListSeconds(one.port, "list" + std::to_string(files), static_cast<std::uint64_t>(files));
    return Sample{seconds * 1000, files / 1000.0};
  });
}

}  // namespace

std::vector<Row> CompareFtp(const std::string& program) {
  const Servers servers(program);
  std::vector<Row> rows;
  for (const std::size_t clients : {std::size_t{1}, kTogether}) {
    rows.push_back(Retrieve(servers, clients));
    rows.push_back(Store(servers, clients));
  }
  rows.push_back(SmallFiles(servers));
  rows.push_back(List(servers, 10000, "10,000", ""));
  rows.push_back(List(servers, 100000, "100,000", "1.50 of vsftpd's"));
  return rows;
}

}  // namespace bench
