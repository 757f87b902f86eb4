#pragma once

// The data sockets: one per control slot and, as element 0, the one passive listener, which every
// PASV of any session moves to another port. A connection to it goes to the slot that sent PORT or
// PASV last. Where sessions are kept apart, each has a passive listener of its own.
//
// This class opens, closes and waits for the connections; what is sent and received on them is the
// transfers' part. Closing a data socket ends its transfer.

#include <array>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>

#include "core/protection.h"
#include "ftp/ftp_session.h"
#include "net/event_socket.h"
#include "net/task.h"

namespace ModFtp {

class DataConnections final : private net::SocketEvents {
 public:
  using Client = std::shared_ptr<net::Connection>;
  /// The address of a session's client.
  using ClientOf = std::function<std::string(int slot)>;
  using ArrivalHandler = std::function<net::Task<>(int slot, Client data)>;

  /// The references must outlive this object.
  DataConnections(net::SocketContext& context, FtpSessions& sessions,
                  const core::Protection& protection, ClientOf clientOf, ArrivalHandler onArrival);

  /// Starts to connect to the address in PORT's text. True means started, not connected.
  net::Task<bool> OpenActiveDataConnection(int slot, std::string text);

  /// Moves the listener and closes the slot's connection. Returns PASV's whole reply, line end
  /// included; `localAddress` is that of the control connection.
  std::string EnterPassiveMode(int slot, std::string_view localAddress);

  /// Waits, without a time limit, until the slot is connected and no other command uses the
  /// connection; then the caller uses it. If several wait, the newest comes first: an older one,
  /// whose own connection never came, must not answer a client that has since asked for something
  /// else.
  net::Task<> AwaitDataConnection(int slot);

  /// Waits for the end of the connection that the slot has now, even if it gets another meanwhile.
  net::Task<> AwaitDataClose(int slot);

  /// The transfer, if it is not finished, ends as `end` says.
  void CloseDataSocket(int slot, net::ActivityEnd end);
  /// The open ones of all slots, because the client of `slot` wants it; the listener stays.
  void CloseAllDataSockets(int slot);
  /// The slot's data socket, and the listener that it may have for itself.
  void EndSession(int slot, net::ActivityEnd end);
  /// Everything, the listeners included.
  void Close();

  /// The connection of the slot now, or null.
  const Client& Current(int slot) const { return Socket(slot).Current(); }

 private:
  void OnConnectionRequest(int index, net::ConnectionRequest& request) override {
    OnFtpDataConnectionRequest(index, request);
  }
  void OnConnect(int slot) override { HoldData(slot); }
  net::Task<> OnDataArrival(int slot, Client data) override {
    return onArrival_(slot, std::move(data));
  }
  void OnClose(int slot) override { OnFtpDataClose(slot); }
  void OnError(int slot) override { CloseDataSocket(slot, net::ActivityEnd::kClientLeft); }

  void OnFtpDataConnectionRequest(int index, net::ConnectionRequest& request);
  void OnFtpDataClose(int slot);

  int ListenOnPassivePort(int listener);
  net::EventSocket& PassiveListener(int slot);
  void HoldData(int slot);
  net::EventSocket& Socket(int index) const {
    return *FtpSvrDataSock_.at(static_cast<std::size_t>(index));
  }

  using Sockets = std::array<std::unique_ptr<net::EventSocket>, FtpSessions::kLastSlot + 1>;

  net::SocketContext& context_;
  FtpSessions& sessions_;
  const core::Protection& protection_;
  ClientOf clientOf_;
  ArrivalHandler onArrival_;
  Sockets FtpSvrDataSock_;
  Sockets ownListeners_;  // of sessions that are kept apart
  std::minstd_rand random_;
};

}  // namespace ModFtp
