#include "settings/settings_table.h"

#include "platform/native_path.h"
#include "text/conversions.h"
#include "text/strings.h"

namespace settings {
namespace {

bool IsSet(std::string_view text) { return text::ToBoolean(text).value_or(false); }

bool Load(const Section& section, const Setting& setting) {
  if (setting.form == Form::kAddress) return true;
  if (const auto* number = std::get_if<std::int16_t*>(&setting.held)) {
    return section.Read(setting.key, **number);
  }
  if (const auto* boolean = std::get_if<bool*>(&setting.held)) {
    return section.Read(setting.key, **boolean);
  }
  const bool isPath = setting.form == Form::kPath;
  *std::get<std::string*>(setting.held) =
      isPath ? section.Path(setting.key) : section.Text(setting.key);
  return true;
}

void SetDefault(const Program& program, const Setting& setting) {
  if (!setting.initial) return;
  const std::string_view initial = *setting.initial;
  if (const auto* number = std::get_if<std::int16_t*>(&setting.held)) {
    **number = text::ToInt16(initial).value_or(0);
  } else if (const auto* boolean = std::get_if<bool*>(&setting.held)) {
    **boolean = IsSet(initial);
  } else {
    const bool isPath = setting.form == Form::kPath;
    *std::get<std::string*>(setting.held) = isPath ? program.File(initial) : std::string(initial);
  }
}

// As it is held.
std::string TextOf(const Setting& setting) {
  if (const auto* number = std::get_if<std::int16_t*>(&setting.held)) {
    return std::to_string(**number);
  }
  if (const auto* boolean = std::get_if<bool*>(&setting.held)) return text::CheckText(**boolean);
  return *std::get<std::string*>(setting.held);
}

std::string EntryOf(const Setting& setting) {
  const std::string text = TextOf(setting);
  switch (setting.form) {
    case Form::kPath:
      return platform::PathTextForUser(text);
    case Form::kCheck:
      return text::CheckText(IsSet(text));
    case Form::kBoolean:
      return text::BooleanText(IsSet(text));
    default:
      return text;
  }
}

bool IsRefused(const Refusal& refusal, const std::string& text) {
  const bool blanksCount = refusal.condition == Refusal::If::kEmpty;
  return blanksCount ? text.empty() : text::TrimBlanks(text).empty();
}

}  // namespace

void SetDefaults(const Program& program, const Table& table) {
  for (const Setting& setting : table.settings) SetDefault(program, setting);
}

void Load(const Section& section, const Table& table) {
  for (const Setting& setting : table.settings) Load(section, setting);
}

bool LoadUntilRefused(const Section& section, const Table& table) {
  for (const Setting& setting : table.settings) {
    if (!Load(section, setting)) return false;
  }
  return true;
}

Entry EntryOf(const Table& table) {
  Entry entry;
  for (const Setting& setting : table.settings) entry[setting.key] = EntryOf(setting);
  return entry;
}

std::optional<Refused> FindRefused(const Table& table, const Entry& entry) {
  std::optional<Refused> first;
  for (const Setting& setting : table.settings) {
    const auto& refusal = setting.refusal;
    if (!refusal || !IsRefused(*refusal, entry.at(setting.key))) continue;
    if (!first || refusal->rank < first->refusal.rank) first = {*refusal, setting.control};
  }
  return first;
}

void Write(Change& change, const Table& table, const Entry& entry) {
  const SectionChange section = change.In(table.section);
  for (const Setting& setting : table.settings) {
    const std::string& text = entry.at(setting.key);
    section.Write(setting.writtenAs.empty() ? setting.key : setting.writtenAs,
                  table.entriesAreTrimmed ? text::TrimBlanks(text) : text);
  }
}

}  // namespace settings
