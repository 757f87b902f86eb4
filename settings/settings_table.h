#pragma once

// The settings of one section of Server.ini, each described once: its key, where it is held in
// memory, its value without a file, the control that shows it, and what a user may not leave there.
// The functions below load, save and check whatever such a table describes.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "settings/change.h"
#include "settings/program.h"
#include "settings/section.h"

namespace settings {

/// How a value is written.
enum class Form {
  kText,
  kPath,     // in the user's own form; a path text in memory
  kAddress,  // only ever written: services ask their sockets
  kNumber,   // a signed 16-bit integer
  kCheck,    // "1" or "0"
  kBoolean,  // "True" or "False"
};

/// What keeps a user's entry from being saved.
struct Refusal {
  enum class If { kEmpty, kBlank };
  enum class Icon { kWarning, kInformation };

  int rank;  // of several refusals, the user sees the one of the lowest rank
  If condition;
  const char* text;
  Icon icon = Icon::kWarning;
};

struct Setting {
  std::string_view key;
  Form form;
  /// A text may hold a Boolean: it is then kept as the file has it, and counts as false if it
  /// cannot be converted.
  std::variant<std::string*, std::int16_t*, bool*> held;
  /// Without a Server.ini. A path is relative to the program directory; none leaves the value
  /// alone.
  std::optional<std::string_view> initial;
  const char* control;
  std::optional<Refusal> refusal = {};
  std::string_view writtenAs = {};  // the key's spelling in a new file, if it differs
};

struct Table {
  std::string_view section;
  std::vector<Setting> settings;   // in the order in which they are written
  bool entriesAreTrimmed = false;  // saved without the blanks at their ends
};

/// A user's entries, or what a dialog shows at first: a text for each key.
using Entry = std::map<std::string_view, std::string>;

void SetDefaults(const Program& program, const Table& table);

/// Loads all values but addresses. Those that cannot be converted stay, and are logged as errors.
void Load(const Section& section, const Table& table);

/// The same, but the first value that cannot be converted ends it. False in that case.
bool LoadUntilRefused(const Section& section, const Table& table);

/// The values held in memory.
Entry EntryOf(const Table& table);

/// The entry that is refused first; none if all can be saved.
struct Refused {
  Refusal refusal;
  const char* control;
};
std::optional<Refused> FindRefused(const Table& table, const Entry& entry);

void Write(Change& change, const Table& table, const Entry& entry);

/// Writes the values held in memory.
inline void WriteHeld(Change& change, const Table& table) { Write(change, table, EntryOf(table)); }

}  // namespace settings
