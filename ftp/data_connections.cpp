#include "ftp/data_connections.h"

#include <algorithm>
#include <chrono>
#include <numeric>

#include "ftp/data_address.h"
#include "ftp/replies.h"
#include "text/conversions.h"

namespace ModFtp {
namespace {

using net::ActivityEnd;
using net::Task;

std::uint32_t ClockSeed() {
  return static_cast<std::uint32_t>(std::chrono::steady_clock::now().time_since_epoch().count());
}

// Whether the client quits its own transfer or cuts off that of another.
ActivityEnd EndByQuit(bool isOwn) {
  return isOwn ? ActivityEnd::kClientLeft : ActivityEnd::kFailed;
}

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

DataConnections::DataConnections(net::SocketContext& context, FtpSessions& sessions,
                                 const core::Protection& protection, ClientOf clientOf,
                                 ArrivalHandler onArrival)
    : context_(context),
      sessions_(sessions),
      protection_(protection),
      clientOf_(std::move(clientOf)),
      onArrival_(std::move(onArrival)),
      random_(ClockSeed()) {
  net::SocketEvents& events = *this;
  for (std::size_t index = 0; index < FtpSvrDataSock_.size(); ++index) {
    FtpSvrDataSock_[index] =
        std::make_unique<net::EventSocket>(context, events, static_cast<int>(index), "FTP");
  }
}

Task<bool> DataConnections::OpenActiveDataConnection(int slot, std::string text) {
  if (!Socket(slot).IsClosed()) co_return false;
  const std::optional<PortArgument> argument = CutPortArgument(text);
  if (!argument) co_return false;
  const auto high = text::ToInt16(argument->high);
  if (!high) co_return false;
  sessions_.StateOf(slot).portHigh = *high;
  const auto low = text::ToInt16(argument->low);
  if (!low) co_return false;
  sessions_.StateOf(slot).portLow = *low;
  const std::optional<ActivePorts> ports = ComputeActivePorts(*high, *low, slot);
  if (!ports) co_return false;

  const auto& [a, b, c, d] = argument->address;
  const std::string address = a + "." + b + "." + c + "." + d;
  if (!protection_.MayCarryData(clientOf_(slot), address)) co_return false;
  Socket(slot).Connect(ports->local, address, ports->remote);
  co_await net::YieldToEvents();
  sessions_.StateOf(slot).pendingDataSlot = static_cast<std::int16_t>(slot);
  co_return true;
}

std::string DataConnections::EnterPassiveMode(int slot, std::string_view localAddress) {
  sessions_.StateOf(slot).pendingDataSlot = static_cast<std::int16_t>(slot);
  const int lowByte = ListenOnPassivePort(protection_.SeparatesSessions() ? slot : 0);
  CloseDataSocket(slot, ActivityEnd::kClientLeft);
  const std::string address = PassiveAddress(localAddress, lowByte);
  return ReplyLine(std::string(replies::kPasv) + address);
}

// Returns the low byte of the port, which is drawn at random. If it is in use, another is drawn,
// until none is left; the reply then names the last one.
int DataConnections::ListenOnPassivePort(int listener) {
  std::array<int, 256> lowBytes;
  std::iota(lowBytes.begin(), lowBytes.end(), 0);
  for (std::size_t drawn = 0; drawn < lowBytes.size(); ++drawn) {
    std::uniform_int_distribution<std::size_t> rest(drawn, lowBytes.size() - 1);
    std::swap(lowBytes[drawn], lowBytes[rest(random_)]);
    const int port = kPassivePortBase + lowBytes[drawn];
    std::error_code error;
    PassiveListener(listener).Listen(static_cast<std::uint16_t>(port),
                                     platform::ReceiveWindow::kAutoTuned, error);
    if (!error) return lowBytes[drawn];
  }
  return lowBytes.back();
}

// One for all sessions, or one for each where they are kept apart.
net::EventSocket& DataConnections::PassiveListener(int slot) {
  if (slot == 0) return Socket(0);
  auto& listener = ownListeners_.at(static_cast<std::size_t>(slot));
  net::SocketEvents& events = *this;
  if (!listener) listener = std::make_unique<net::EventSocket>(context_, events, slot, "FTP");
  return *listener;
}

void DataConnections::OnFtpDataConnectionRequest(int index, net::ConnectionRequest& request) {
  const int slot = index == 0 ? sessions_.shared.pendingDataSlot : index;
  if (!protection_.MayCarryData(clientOf_(slot), request.RemoteAddress())) return;
  CloseDataSocket(slot, ActivityEnd::kEvicted);
  Socket(slot).Accept(request);
  HoldData(slot);
  Socket(slot).Current()->StartReading();
}

// Bytes of an upload that has not been accepted stay with the sender: what is sent early is not
// lost, and nothing is written where it must not be.
void DataConnections::HoldData(int slot) {
  const Client data = Socket(slot).Current();
  data->HoldReading(true);
  data->ReceiveInBulk();
}

// The end of an upload is the client's to tell.
void DataConnections::OnFtpDataClose(int slot) {
  const bool isUpload = Current(slot)->CurrentActivity().kind == net::Activity::Kind::kUpload;
  CloseDataSocket(slot, isUpload ? ActivityEnd::kComplete : ActivityEnd::kClientLeft);
}

void DataConnections::CloseDataSocket(int slot, ActivityEnd end) {
  sessions_[slot].EndTransfer();
  Socket(slot).Close(end);
}

void DataConnections::CloseAllDataSockets(int slot) {
  for (int each = 1; each <= FtpSessions::kLastSlot; ++each) {
    const bool isTouched = each == slot || !protection_.SeparatesSessions();
    if (isTouched && !Socket(each).IsClosed()) CloseDataSocket(each, EndByQuit(each == slot));
  }
}

void DataConnections::EndSession(int slot, ActivityEnd end) {
  CloseDataSocket(slot, end);
  if (const auto& listener = ownListeners_.at(static_cast<std::size_t>(slot))) listener->Close();
}

void DataConnections::Close() {
  Socket(0).Close();
  for (auto& listener : ownListeners_) listener.reset();
  for (int slot = 1; slot <= FtpSessions::kLastSlot; ++slot) {
    CloseDataSocket(slot, ActivityEnd::kServiceStopped);
  }
}

Task<> DataConnections::AwaitDataConnection(int slot) {
  FtpSession& session = sessions_[slot];
  net::EventSocket& data = Socket(slot);
  const WaitingPlace place(session.waiting);
  while (!place.IsNewest() || session.transfer || data.State() != net::SocketState::kConnected) {
    net::WaitList::Awaiter change = data.StateChanges().Wait();
    co_await change;
  }
  session.transfer = std::make_shared<Transfer>();
}

Task<> DataConnections::AwaitDataClose(int slot) {
  net::EventSocket& socket = Socket(slot);
  const Client data = socket.Current();
  while (data && !data->IsClosed()) {
    net::WaitList::Awaiter change = socket.StateChanges().Wait();
    co_await change;
  }
  co_await net::YieldToEvents();
}

}  // namespace ModFtp
