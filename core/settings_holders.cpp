#include "core/settings_holders.h"

#include <utility>

namespace core {

SettingsHolders::Holder::Holder(SettingsHolders& holders, std::function<void()> write)
    : holders_(holders), write_(std::move(write)) {
  holders_.holders_.push_back(this);
}

SettingsHolders::Holder::~Holder() { std::erase(holders_.holders_, this); }

void SettingsHolders::WriteAll() {
  if (isWriting_) return;
  isWriting_ = true;
  for (Holder* holder : holders_) holder->write_();
  isWriting_ = false;
}

}  // namespace core
