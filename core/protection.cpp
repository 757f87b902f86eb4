#include "core/protection.h"

#include <algorithm>
#include <utility>

#include "settings/change.h"
#include "text/printable_text.h"

namespace core {
namespace {

using Reach = ProtectionOptions::Reach;

constexpr std::chrono::seconds kNetworksHold{2};
constexpr std::size_t kLongestShownName = 80;

}  // namespace

Protection::Protection(const settings::Program& program)
    : program_(program), holder_(program.Holders(), [this](settings::Change& change) {
        WriteProtection(change, program_, options_);
      }) {}

void Protection::Load() {
  options_ = LoadProtection(program_, options_);
  confinement_ = {
      .isOn = options_.confine,
      .links = options_.followLinks ? platform::Links::kMayLeadOut : platform::Links::kStayInside};
}

bool Protection::MayConnect(std::uint32_t client) {
  if (options_.reach == Reach::kAll || IsNear(client)) return true;
  ++refused_;
  return false;
}

bool Protection::IsNear(std::uint32_t address) {
  ReadNetworks();
  return IsWithinReach(address, options_.reach, networks_);
}

// The interfaces may change at any time, but asking the system costs more than a short memory.
void Protection::ReadNetworks() {
  const auto now = std::chrono::steady_clock::now();
  if (!networks_.empty() && now - networksRead_ <= kNetworksHold) return;
  networks_ = platform::LocalNetworks();
  networksRead_ = now;
}

bool IsWithinReach(std::uint32_t address, Reach reach,
                   const std::vector<platform::LocalNetwork>& networks) {
  if (reach == Reach::kAll) return true;
  return std::any_of(networks.begin(), networks.end(), [&](const platform::LocalNetwork& each) {
    // Every address of the loopback network is this machine's. A link between two machines may have
    // no mask.
    const bool isLoopback = each.address >> 24 == 127;
    const bool isWhole = each.mask != 0 && (reach == Reach::kLan || isLoopback);
    const std::uint32_t mask = isWhole ? each.mask : ~std::uint32_t{0};
    return (address & mask) == (each.address & mask);
  });
}

net::Task<Accounts::Answer> Protection::TrySignIn(std::shared_ptr<net::Connection> client,
                                                  Login& login, std::string password) {
  const std::string name = login.Name();
  net::Task<Accounts::Answer> trying =
      signIn_.Try(client->RemoteAddress(), name, std::move(password));
  const Accounts::Answer answer = co_await trying;
  login.Finish(name, answer == Accounts::Answer::kRight);
  const bool isSignedIn = login.IsSignedIn();
  if (!name.empty()) {
    client->Tell(
        {.kind = net::Activity::Kind::kSignIn, .what = text::Printable(name, kLongestShownName)},
        isSignedIn ? net::ActivityEnd::kComplete : net::ActivityEnd::kRefused);
  }
  const bool isOvertaken = answer == Accounts::Answer::kRight && !isSignedIn;
  co_return isOvertaken ? Accounts::Answer::kWrong : answer;
}

bool Protection::MayChange(const std::filesystem::path& place) const {
  if (programFolder_.empty()) return true;
  const std::filesystem::path programs = platform::RealPathOf(programFolder_);
  return !platform::IsAtOrBelow(place, programs) && !platform::IsAtOrBelow(programs, place);
}

}  // namespace core
