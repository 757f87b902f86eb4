#include <filesystem>
#include <map>

#include "tests/web/web_fixture.h"
#include "web/cgi_queue.h"

namespace {

using test::Client;

class Cgi : public test::WebFixture {
 protected:
  void SetUp() override {
    WebFixture::SetUp();
    std::filesystem::create_directory(Home().Path("wwwroot/cgi-bin"));
    for (const char* name : {"held.exe", "next.exe"}) {
      std::filesystem::copy_file(CGI_ECHO, Home().Path("wwwroot/cgi-bin") / name);
    }
  }
  std::unique_ptr<Client> Post(const std::string& resource, const std::string& body) {
    auto client = std::make_unique<Client>(port_);
    client->Send("POST " + resource +
                 " HTTP/1.0\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
    return client;
  }
};

TEST_F(Cgi, TheNextProgramWaitsForTheOneThatRunsAndNobodyElseDoes) {
  const std::string input = "wwwroot/cgi-bin/TempFileIn";
  const std::string go = "wwwroot/cgi-bin/go";
  enum { kClientStays, kClientLeaves, kServiceRestarts };
  for (const auto meanwhile : {kClientStays, kClientLeaves, kServiceRestarts}) {
    const auto first = Post("/held.exe", "first");
    ASSERT_TRUE(Eventually([&] { return Home().Has(input); }));
    if (meanwhile == kClientLeaves) first->Reset();
    OnLoop([&] {
      if (meanwhile != kServiceRestarts) return;
      TheServer().Stop();
      TheServer().Start();
      port_ = TheServer().ListeningPort();
    });
    const auto next = Post("/next.exe", "next");
    EXPECT_EQ(Get("/small.txt"), "small");
    EXPECT_EQ(Home().Read(input), "first\r\n");
    Home().Write(go, "");
    EXPECT_EQ(first->ReceiveAll(), meanwhile == kClientStays ? "3|first\r\n|" : "");
    EXPECT_EQ(next->ReceiveAll(), "3|next\r\n|");
    EXPECT_FALSE(Home().Has("wwwroot/held.htm"));
    for (const auto& file : {input, go}) std::filesystem::remove(Home().Path(file));
  }
}

net::Task<> Ask(ModWeb::CgiQueue& queue, ModWeb::CgiJob job, int& answered) {
  net::Task<platform::File> running = queue.Run(std::move(job));
  const platform::File page = co_await running;
  ++answered;
}

TEST_F(Cgi, WhatWaitsForAProgramIsBounded) {
  const struct {
    int requests;
    std::size_t bodySize;
    int refused;
  } cases[] = {{1 + 64 + 5, 10, 5}, {1 + 7 + 2, 1'000'000, 2}};
  const std::string root = Home().Text("wwwroot\\");
  for (const auto& each : cases) {
    int answered = 0;
    OnLoop([&] {
      ModWeb::CgiQueue queue(Environment());
      const auto scope = std::make_shared<net::HandlerScope>(test::TheLoopHost().Loop(),
                                                             [](const std::string&) {});
      const ModWeb::CgiJob job = {root + "cgi-bin\\next.exe", root + "in", root + "out",
                                  root + "page", std::string(each.bodySize, 'x')};
      for (int i = 0; i < each.requests; ++i) scope->Start(Ask(queue, job, answered));
      EXPECT_EQ(answered, each.refused);
      scope->End();
    });
    EXPECT_FALSE(Home().Has("wwwroot/out"));
  }
}

TEST_F(Cgi, EveryClientGetsThePageOfItsOwnRunOfOneProgram) {
  for (int round = 0; round < 10; ++round) {
    // Of several pieces, so that each is still being sent while the next ones are written.
    std::map<char, std::unique_ptr<Client>> clients;
    for (const char c : {'a', 'b', 'c'}) clients[c] = Post("/next.exe", std::string(25000, c));
    for (const auto& [c, client] : clients) {
      EXPECT_TRUE(client->ReceiveAll() == "3|" + std::string(25000, c) + "\r\n|");
    }
  }
  EXPECT_TRUE(Eventually([&] {
    const std::filesystem::directory_iterator entries(Home().Path("wwwroot/cgi-bin"));
    return std::distance(entries, {}) == 3;  // the programs and their input
  }));
}

}  // namespace
