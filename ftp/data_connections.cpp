// Opening and closing data connections, and waiting for them.

#include <algorithm>
#include <numeric>

#include "ftp/data_address.h"
#include "ftp/ftp_server.h"
#include "ftp/replies.h"
#include "text/conversions.h"

namespace ModFtp {
namespace {

using net::Task;

// A command's place among those of its slot that wait for a data connection.
class WaitingPlace {
 public:
  explicit WaitingPlace(std::vector<int>& waiting) : waiting_(waiting) {
    number_ = waiting_.empty() ? 0 : waiting_.back() + 1;
    waiting_.push_back(number_);
  }
  ~WaitingPlace() { std::erase(waiting_, number_); }
  WaitingPlace(const WaitingPlace&) = delete;
  WaitingPlace& operator=(const WaitingPlace&) = delete;

  bool IsNewest() const { return waiting_.back() == number_; }

 private:
  std::vector<int>& waiting_;
  int number_;
};

}  // namespace

Task<bool> FtpServer::OpenActiveDataConnection(int slot, std::string text) {
  if (!FtpSvrDataSock(slot).IsClosed()) co_return false;
  const std::optional<PortArgument> argument = CutPortArgument(text);
  if (!argument) co_return false;
  const auto high = text::ToInt16(argument->high);
  if (!high) co_return false;
  state_.portHigh = *high;
  const auto low = text::ToInt16(argument->low);
  if (!low) co_return false;
  state_.portLow = *low;
  const std::optional<ActivePorts> ports = ComputeActivePorts(*high, *low, slot);
  if (!ports) co_return false;

  const auto& [a, b, c, d] = argument->address;
  const std::string address = a + "." + b + "." + c + "." + d;
  FtpSvrDataSock(slot).Connect(ports->local, address, ports->remote);
  co_await net::YieldToEvents();
  Session(slot).closeAfterSend = false;
  state_.pendingDataSlot = static_cast<std::int16_t>(slot);
  co_return true;
}

std::string FtpServer::EnterPassiveMode(int slot) {
  state_.pendingDataSlot = static_cast<std::int16_t>(slot);
  const int lowByte = ListenOnPassivePort();
  CloseDataSocket(slot);
  const std::string address = PassiveAddress(FtpSvrSock_[slot].LocalAddress(), lowByte);
  return ReplyLine(std::string(replies::kPasv) + address);
}

// The low byte of a port drawn at random. One that is taken makes way for another, until none is
// left; the reply then names the last.
int FtpServer::ListenOnPassivePort() {
  std::array<int, 256> lowBytes;
  std::iota(lowBytes.begin(), lowBytes.end(), 0);
  for (std::size_t drawn = 0; drawn < lowBytes.size(); ++drawn) {
    std::uniform_int_distribution<std::size_t> rest(drawn, lowBytes.size() - 1);
    std::swap(lowBytes[drawn], lowBytes[rest(random_)]);
    const int port = kPassivePortBase + lowBytes[drawn];
    std::error_code error;
    FtpSvrDataSock(0).Listen(static_cast<std::uint16_t>(port), error);
    if (!error) return lowBytes[drawn];
  }
  return lowBytes.back();
}

void FtpServer::OnFtpDataConnectionRequest(int, net::ConnectionRequest& request) {
  const int slot = state_.pendingDataSlot;
  CloseDataSocket(slot);
  FtpSvrDataSock(slot).Accept(request);
  HoldData(slot);
  FtpSvrDataSock(slot).Current()->StartReading();
}

// What comes before its upload has been accepted stays with the sender: nothing sent early is lost,
// and nothing is written where it may not be.
void FtpServer::HoldData(int slot) {
  const Client data = FtpSvrDataSock(slot).Current();
  data->HoldReading(true);
  data->GatherSends();
}

void FtpServer::CloseDataSocket(int slot) {
  Session(slot).EndTransfer();
  FtpSvrDataSock(slot).Close();
}

// One command at a time, and of those that wait the newest: an older one whose own connection never
// came does not answer a client that has gone on to ask for something else.
Task<> FtpServer::AwaitDataConnection(int slot) {
  FtpSession& session = Session(slot);
  net::EventSocket& data = FtpSvrDataSock(slot);
  const WaitingPlace place(session.waiting);
  while (!place.IsNewest() || session.transfer || data.State() != net::SocketState::kConnected) {
    net::WaitList::Awaiter change = data.StateChanges().Wait();
    co_await change;
  }
  session.transfer = std::make_shared<Transfer>();
}

// Waits for the end of the connection that is carried now, whatever the slot carries then.
Task<> FtpServer::AwaitDataClose(int slot) {
  net::EventSocket& socket = FtpSvrDataSock(slot);
  const Client data = socket.Current();
  while (data && !data->IsClosed()) {
    net::WaitList::Awaiter change = socket.StateChanges().Wait();
    co_await change;
  }
  co_await net::YieldToEvents();
}

}  // namespace ModFtp
