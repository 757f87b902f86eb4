#pragma once

// The objects that hold settings of Server.ini in memory. The file is created when the user first
// confirms a dialog, and from then on every loader takes all of its keys from it. So a new file
// must not have the keys of one dialog alone: each holder writes its settings into it, and
// confirming one dialog changes nothing for the others.

#include <functional>
#include <vector>

namespace settings {

class Change;

class SettingsHolders {
 public:
  using Write = std::function<void(Change&)>;

  /// Registered while it lives.
  class Holder {
   public:
    /// `write`: puts all of the held settings into a change.
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
