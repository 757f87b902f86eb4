#pragma once

// Connection slots on the tests' loop, with an engine whose handler a test sets.

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "net/connection_slots.h"
#include "net/draining_connections.h"
#include "tests/support/server_fixture.h"

namespace test {

class SlotsFixture : public ProgramFixture, protected net::SlotEngine {
 protected:
  using Arrival = std::shared_ptr<net::Connection>;
  using BusySlot = net::ConnectionSlots::BusySlot;
  using State = net::SocketState;

  ~SlotsFixture() override {
    OnLoop([this] {
      slots_.reset();
      draining_.reset();
    });
  }

  void Open(BusySlot busySlot, const std::string& greeting = "") {
    OnLoop([&] {
      net::EventLoop& loop = TheLoopHost().Loop();
      draining_.emplace(loop);
      const auto report = [this](const std::string& error) { errors_.push_back(error); };
      context_.emplace(net::SocketContext{loop, *draining_, report});
      slots_.emplace(*context_, static_cast<net::SlotEngine&>(*this), busySlot, greeting);
      Listen();
    });
  }
  void Listen() {
    std::error_code error;
    slots_->Listen(0, error);
    slots_->CreateSlots();
  }

  // A new client that has sent `bytes`.
  std::unique_ptr<Client> NewClient(std::string_view bytes = "") {
    auto client = std::make_unique<Client>(slots_->Listener().LocalPort());
    client->Send(bytes);
    return client;
  }
  bool SlotIs(int slot, State state) {
    return Eventually([&] { return (*slots_)[slot].State() == state; });
  }

  net::Task<> OnDataArrival(int slot, Arrival connection) override {
    return onArrival_(slot, std::move(connection));
  }
  void OnClose(int slot) override { (*slots_)[slot].Current()->CloseWhenHandlersEnd(); }
  void OnError(int slot) override { (*slots_)[slot].Close(); }

  std::function<net::Task<>(int slot, Arrival connection)> onArrival_;
  std::vector<std::string> errors_;
  std::optional<net::DrainingConnections> draining_;
  std::optional<net::SocketContext> context_;
  std::optional<net::ConnectionSlots> slots_;
};

}  // namespace test
