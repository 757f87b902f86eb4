#include "settings/holders.h"

#include <utility>

namespace settings {

SettingsHolders::Holder::Holder(SettingsHolders& holders, Write write)
    : holders_(holders), write_(std::move(write)) {
  holders_.holders_.push_back(this);
}

SettingsHolders::Holder::~Holder() { std::erase(holders_.holders_, this); }

void SettingsHolders::WriteAll(Change& change) const {
  for (const Holder* holder : holders_) holder->write_(change);
}

}  // namespace settings
