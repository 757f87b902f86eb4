#pragma once

// Those who hold settings of Server.ini in memory. The file comes into being when the user first
// confirms a dialog. From then on a loader takes every key from it, so it must not begin with the
// keys of one dialog alone: everyone writes what he holds at that moment, and confirming one dialog
// changes nothing for the others.

#include <functional>
#include <vector>

namespace core {

class SettingsHolders {
 public:
  /// Belongs to the holders for as long as it lives.
  class Holder {
   public:
    /// `write`: writes everything that is held.
    Holder(SettingsHolders& holders, std::function<void()> write);
    ~Holder();
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

   private:
    friend class SettingsHolders;

    SettingsHolders& holders_;
    std::function<void()> write_;
  };

  /// Lets everyone write. Does nothing while that is going on already.
  void WriteAll();

 private:
  std::vector<Holder*> holders_;
  bool isWriting_ = false;
};

}  // namespace core
