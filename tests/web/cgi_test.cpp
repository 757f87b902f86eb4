#include <filesystem>
#include <thread>

#include "tests/web/web_fixture.h"
#include "web/cgi_queue.h"

namespace {

using test::Client;

class Cgi : public test::WebFixture {
 protected:
  // The test's program under a name that a CGI program may have.
  void Program(const std::string& name) {
    const std::filesystem::path target = Home().Path("wwwroot/cgi-bin/" + name);
    std::filesystem::create_directories(target.parent_path());
    std::filesystem::copy_file(CGI_ECHO, target);
  }
  std::vector<std::unique_ptr<Client>> PostAtOnce(const std::string& resource,
                                                  const std::vector<std::string>& bodies) {
    std::vector<std::unique_ptr<Client>> clients;
    for (const std::string& body : bodies) {
      clients.push_back(std::make_unique<Client>(port_));
      clients.back()->Send(Request(resource, body));
    }
    return clients;
  }
  std::string Post(const std::string& resource, const std::string& body) {
    return test::Fetch(port_, Request(resource, body));
  }
  static std::string Request(const std::string& resource, const std::string& body) {
    return "POST " + resource + " HTTP/1.0\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\n\r\n" + body;
  }
};

TEST_F(Cgi, ARestartedServiceWaitsForTheProgramThatStillRunsAndDropsItsPage) {
  StartWeb();
  Program("slow.exe");
  Program("next.exe");
  Client cut(port_);
  cut.Send(Request("/slow.exe", "first"));
  ASSERT_TRUE(Eventually([&] { return Home().Has("wwwroot/cgi-bin/TempFileIn"); }));
  OnLoop([&] {
    TheServer().Stop();
    TheServer().Start();
    port_ = TheServer().ListeningPort();
  });
  EXPECT_EQ(Post("/next.exe", "second"), "3|second\r\n|");
  EXPECT_FALSE(Home().Has("wwwroot/slow.htm"));
}

TEST_F(Cgi, TheEndOfTheServerEndsTheProgramAndRemovesItsPage) {
  StartWeb();
  Program("slow.exe");
  Client cut(port_);
  cut.Send(Request("/slow.exe", "x"));
  ASSERT_TRUE(Eventually([&] { return Home().Has("wwwroot/cgi-bin/TempFileIn"); }));
  StopServer();
  EXPECT_FALSE(Home().Has("wwwroot/slow.htm"));
}

net::Task<> Ask(ModWeb::CgiQueue& queue, ModWeb::CgiJob job, int& answered) {
  net::Task<platform::File> running = queue.Run(std::move(job));
  const platform::File page = co_await running;
  ++answered;
}

TEST_F(Cgi, WhatWaitsForAProgramIsBounded) {
  Program("slow.exe");
  const std::string cgiBin = Home().Text("wwwroot/cgi-bin") + "\\";
  const auto refusedAtOnce = [&](int count, std::size_t bodySize) {
    int refused = 0;
    OnLoop([&] {
      ModWeb::CgiQueue queue(Environment());
      const auto scope = std::make_shared<net::HandlerScope>(test::TheLoopHost().Loop(),
                                                             [](const std::string&) {});
      for (int i = 0; i < count; ++i) {
        scope->Start(Ask(queue,
                         {.program = cgiBin + "slow.exe",
                          .inPath = cgiBin + "TempFileIn",
                          .outPath = Home().Text("wwwroot/slow.htm"),
                          .pagePath = cgiBin + "TempFileOut",
                          .body = std::string(bodySize, 'x')},
                         refused));
      }
      const int atOnce = refused;
      scope->End();
      refused = atOnce;
    });
    return refused;
  };
  // One runs; so many wait behind it, or so many bytes.
  EXPECT_EQ(refusedAtOnce(1 + 64 + 5, 10), 5);
  EXPECT_EQ(refusedAtOnce(1 + 7 + 2, 1'000'000), 2);
  EXPECT_FALSE(Home().Has("wwwroot/slow.htm"));
}

TEST_F(Cgi, ProgramsRunOneAfterAnotherAndHoldUpNobody) {
  StartWeb();
  Program("slow1.exe");
  Program("slow2.exe");
  Page("a.txt", "meanwhile");
  Client first(port_);
  Client second(port_);
  first.Send(Request("/slow1.exe", "one"));
  second.Send(Request("/slow2.exe", "two"));
  EXPECT_EQ(Get("/a.txt"), "meanwhile");
  EXPECT_EQ(first.ReceiveAll(), "3|one\r\n|");
  EXPECT_EQ(second.ReceiveAll(), "3|two\r\n|");
}

TEST_F(Cgi, EveryClientGetsThePageOfItsOwnRunOfOneProgram) {
  StartWeb();
  Program("form.exe");
  for (int round = 0; round < 10; ++round) {
    // Of several pieces, so that each is still being sent while the next ones are written.
    std::vector<std::string> bodies;
    for (const char letter : {'a', 'b', 'c'}) bodies.emplace_back(25000, letter);
    const auto clients = PostAtOnce("/form.exe", bodies);
    for (std::size_t i = 0; i < clients.size(); ++i) {
      EXPECT_TRUE(clients[i]->ReceiveAll() == "3|" + bodies[i] + "\r\n|") << i;
    }
  }
  EXPECT_TRUE(Eventually([&] {
    const std::filesystem::directory_iterator entries(Home().Path("wwwroot/cgi-bin"));
    return std::distance(entries, {}) == 2;  // the program and its input
  }));
  EXPECT_EQ(ErrorLog(), "");
}

TEST_F(Cgi, AClientThatLeavesTakesNothingWithIt) {
  StartWeb();
  Program("slow.exe");
  Program("next.exe");
  Client leaving(port_);
  leaving.Send(Request("/slow.exe", "lost"));
  ASSERT_TRUE(Eventually([&] { return Home().Has("wwwroot/cgi-bin/TempFileIn"); }));
  leaving.Reset();
  // The next program waits for the one that runs, and the page that nobody fetches is removed.
  EXPECT_EQ(Post("/next.exe", "n"), "3|n\r\n|");
  EXPECT_FALSE(Home().Has("wwwroot/slow.htm"));
}

}  // namespace
