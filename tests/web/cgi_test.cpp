#include <chrono>
#include <filesystem>

#include "tests/web/web_fixture.h"
#include "web/cgi_queue.h"

namespace {

using test::Client;

class Cgi : public test::WebFixture {
 protected:
  void SetUp() override {
    StartWeb();
    std::filesystem::create_directory(Home().Path("wwwroot/cgi-bin"));
    for (const char* name : {"slow.exe", "next.exe"}) {
      std::filesystem::copy_file(CGI_ECHO, Home().Path("wwwroot/cgi-bin") / name);
    }
  }
  std::unique_ptr<Client> Post(const std::string& resource, const std::string& body) {
    auto client = std::make_unique<Client>(port_);
    client->Send("POST " + resource +
                 " HTTP/1.0\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    return client;
  }
  // Its program runs.
  std::unique_ptr<Client> PostSlow() {
    start_ = std::chrono::steady_clock::now();
    auto client = Post("/slow.exe", "slow");
    EXPECT_TRUE(Eventually([&] { return Home().Has("wwwroot/cgi-bin/TempFileIn"); }));
    return client;
  }
  // However fast the machine, the slow program takes so long.
  void ExpectThatSlowHasEnded() const {
    EXPECT_GE(std::chrono::steady_clock::now() - start_, std::chrono::milliseconds(700));
    EXPECT_FALSE(Home().Has("wwwroot/slow.htm"));
  }

 private:
  std::chrono::steady_clock::time_point start_;
};

// The next program waits for the one that runs, whose page nobody gets.
TEST_F(Cgi, AProgramOutlivesItsClientAndTheServiceButItsPageDoesNot) {
  for (const bool restarts : {false, true}) {
    const auto client = PostSlow();
    if (!restarts) client->Reset();
    OnLoop([&] {
      if (!restarts) return;
      TheServer().Stop();
      TheServer().Start();
      port_ = TheServer().ListeningPort();
    });
    EXPECT_EQ(Post("/next.exe", "n")->ReceiveAll(), "3|n\r\n|");
    ExpectThatSlowHasEnded();
    std::filesystem::remove(Home().Path("wwwroot/cgi-bin/TempFileIn"));
  }
}

TEST_F(Cgi, TheEndOfTheServerEndsTheProgramAndRemovesItsPage) {
  const auto client = PostSlow();
  StopServer();
  ExpectThatSlowHasEnded();
}

net::Task<> Ask(ModWeb::CgiQueue& queue, ModWeb::CgiJob job, int& answered) {
  net::Task<platform::File> running = queue.Run(std::move(job));
  const platform::File page = co_await running;
  ++answered;
}

TEST_F(Cgi, WhatWaitsForAProgramIsBounded) {
  const std::string cgiBin = Home().Text("wwwroot/cgi-bin") + "\\";
  const auto refusedAtOnce = [&](int count, std::size_t bodySize) {
    int answered = 0;
    int refused = 0;
    OnLoop([&] {
      ModWeb::CgiQueue queue(Environment());
      const auto scope = std::make_shared<net::HandlerScope>(test::TheLoopHost().Loop(),
                                                             [](const std::string&) {});
      const ModWeb::CgiJob job = {cgiBin + "slow.exe", cgiBin + "TempFileIn",
                                  Home().Text("wwwroot/slow.htm"), cgiBin + "TempFileOut",
                                  std::string(bodySize, 'x')};
      for (int i = 0; i < count; ++i) scope->Start(Ask(queue, job, answered));
      refused = answered;
      scope->End();
    });
    return refused;
  };
  // One runs; so many wait behind it, or so many bytes.
  EXPECT_EQ(refusedAtOnce(1 + 64 + 5, 10), 5);
  EXPECT_EQ(refusedAtOnce(1 + 7 + 2, 1'000'000), 2);
  EXPECT_FALSE(Home().Has("wwwroot/slow.htm"));
}

TEST_F(Cgi, ProgramsRunOneAfterAnotherAndHoldUpNobody) {
  Page("a.txt", "meanwhile");
  const auto first = PostSlow();
  const auto second = Post("/next.exe", "two");
  EXPECT_EQ(Get("/a.txt"), "meanwhile");
  EXPECT_EQ(first->ReceiveAll(), "3|slow\r\n|");
  EXPECT_EQ(second->ReceiveAll(), "3|two\r\n|");
}

TEST_F(Cgi, EveryClientGetsThePageOfItsOwnRunOfOneProgram) {
  for (int round = 0; round < 10; ++round) {
    // Of several pieces, so that each is still being sent while the next ones are written.
    std::vector<std::unique_ptr<Client>> clients;
    for (const char letter : {'a', 'b', 'c'}) {
      clients.push_back(Post("/next.exe", std::string(25000, letter)));
    }
    for (std::size_t i = 0; i < clients.size(); ++i) {
      EXPECT_TRUE(clients[i]->ReceiveAll() ==
                  "3|" + std::string(25000, static_cast<char>('a' + i)) + "\r\n|");
    }
  }
  EXPECT_TRUE(Eventually([&] {
    const std::filesystem::directory_iterator entries(Home().Path("wwwroot/cgi-bin"));
    return std::distance(entries, {}) == 3;  // the programs and their input
  }));
  EXPECT_EQ(ErrorLog(), "");
}

}  // namespace
