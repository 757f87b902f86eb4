#include "bench/ftp_load.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
#include <memory>
#include <thread>

#include "bench/failure.h"
#include "bench/ftp_client.h"
#include "bench/stopwatch.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

struct Session {
  explicit Session(std::uint16_t port) : client(port) {
    client.SignIn();
    data = client.OpenPassive();
    client.Ask("NOOP");  // the connection has been accepted before the next PASV
  }
  FtpClient client;
  Descriptor data;
};

std::vector<std::unique_ptr<Session>> Open(std::uint16_t port, std::size_t count) {
  std::vector<std::unique_ptr<Session>> sessions;
  for (std::size_t i = 0; i < count; ++i) sessions.push_back(std::make_unique<Session>(port));
  return sessions;
}

// The seconds that `transfer` takes for each of them, all at once.
template <class Transfer>
std::vector<double> Together(const std::vector<std::unique_ptr<Session>>& sessions,
                             const Transfer& transfer) {
  std::vector<std::future<double>> running;
  const Clock::time_point start = Clock::now();
  for (std::size_t i = 0; i < sessions.size(); ++i) {
    running.push_back(std::async(std::launch::async, [&, i] {
      transfer(*sessions[i], i);
      return SecondsSince(start);
    }));
  }
  std::vector<double> seconds;
  for (auto& one : running) seconds.push_back(one.get());
  return seconds;
}

}  // namespace

std::vector<double> RetrieveTogether(std::uint16_t port, std::size_t clients,
                                     const std::string& file, std::uint64_t bytes) {
  const auto sessions = Open(port, clients);
  return Together(sessions, [&](Session& session, std::size_t) {
    session.client.Tell("RETR /" + file);
    const std::uint64_t received = ReceiveAll(session.data.Number());
    session.data.Close();
    session.client.ExpectTransferred();
    Expect(received == bytes, "FTP: not the whole file");
  });
}

double StoreTogether(std::uint16_t port, std::size_t clients, std::uint64_t bytes,
                     const Folder& folder) {
  const std::string upload = folder.Path("ftproot/upload/");
  const auto sessions = Open(port, clients);
  for (const auto& session : sessions) session->client.Ask("CWD /upload");
  const std::vector<double> seconds = Together(sessions, [&](Session& session, std::size_t number) {
    session.client.Tell("STOR " + std::to_string(number));
    SendMany(session.data.Number(), bytes);
    session.data.Close();
    session.client.ExpectTransferred();
  });
  for (std::size_t i = 0; i < clients; ++i) {
    const std::string path = upload + std::to_string(i);
    Expect(fs::file_size(path) == bytes, "FTP: not the whole file is stored");
    fs::remove(path);
  }
  return *std::max_element(seconds.begin(), seconds.end());
}

int RetrieveOften(std::uint16_t port, const std::string& file, std::uint64_t bytes,
                  double seconds) {
  FtpClient client(port);
  client.SignIn();
  const Clock::time_point start = Clock::now();
  int count = 0;
  for (; SecondsSince(start) < seconds; ++count) {
    Expect(client.Fetch("RETR /" + file) == bytes, "FTP: not the whole file");
  }
  return count;
}

double ListSeconds(std::uint16_t port, const std::string& folder, std::uint64_t files) {
  FtpClient client(port);
  client.SignIn();
  const std::string reply = client.Ask("CWD /" + folder);
  Expect(reply.starts_with("250"), "FTP: no such folder: " + reply);
  std::uint64_t lines = 0;
  const double seconds = SecondsOf([&] { lines = client.CountLines("LIST"); });
  // Some begin with a line that says "total".
  Expect(lines == files || lines == files + 1,
         "FTP: a listing of " + std::to_string(lines) + " lines");
  return seconds;
}

void FillFolder(const Folder& folder, const std::string& name, int first, int end) {
  const std::string path = folder.Path("ftproot/" + name);
  fs::create_directories(path);
  for (int i = first; i < end; ++i) {
    std::ofstream(path + "/file" + std::to_string(10000000 + i) + ".txt") << 'x';
  }
}

double SlowestAnswer(std::uint16_t port, const std::function<void()>& action) {
  std::future<void> running = std::async(std::launch::async, action);
  FtpClient other(port);
  double slowest = 0;
  while (running.wait_for(std::chrono::milliseconds(2)) != std::future_status::ready) {
    slowest = std::max(slowest, SecondsOf([&] { other.Ask("NOOP"); }));
  }
  running.get();
  return slowest;
}

}  // namespace bench
