#pragma once

// Those who hold settings of Server.ini in memory. The file comes into being when the user first
// confirms a dialog. From then on a loader takes every key from it, so it must not begin with the
// keys of one dialog alone: everyone writes what he holds at that moment, and confirming one dialog
// changes nothing for the others.

#include <functional>
#include <vector>

namespace settings {

class Change;

class SettingsHolders {
 public:
  using Write = std::function<void(Change&)>;

  /// Belongs to the holders for as long as it lives.
  class Holder {
   public:
    /// `write`: puts everything that is held into a change.
    Holder(SettingsHolders& holders, Write write);
    ~Holder();
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

   private:
    friend class SettingsHolders;

    SettingsHolders& holders_;
    Write write_;
  };

  void WriteAll(Change& change) const;

 private:
  std::vector<Holder*> holders_;
};

}  // namespace settings
