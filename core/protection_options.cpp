#include "core/protection_options.h"

#include <algorithm>
#include <array>
#include <string>

#include "platform/text_case.h"
#include "settings/optional_values.h"
#include "settings/section.h"
#include "text/conversions.h"
#include "text/strings.h"

namespace core {
namespace {

using Reach = ProtectionOptions::Reach;

constexpr int kDefaultLimit = 25;

struct NamedReach {
  std::string_view name;
  Reach reach;
};
constexpr auto kReaches = std::to_array<NamedReach>(
    {{"all", Reach::kAll}, {"lan", Reach::kLan}, {"local", Reach::kLocal}, {"", Reach::kAll}});

bool AreSame(std::string_view first, std::string_view second) {
  return platform::UpperCase(first) == platform::UpperCase(second);
}

std::string ReachText(Reach reach) {
  return std::string(std::find_if(kReaches.begin(), kReaches.end(), [&](const NamedReach& each) {
                       return each.reach == reach;
                     })->name);
}

// Reads values that are either known or replaced by the stricter one.
class Reader {
 public:
  Reader(const settings::Program& program, const settings::Section& section)
      : program_(program), section_(section) {}

  Reach ReadReach() const {
    const std::string text = Text("Reach");
    const auto known = std::find_if(kReaches.begin(), kReaches.end(), [&](const NamedReach& each) {
      return AreSame(each.name, text);
    });
    if (known != kReaches.end()) return known->reach;
    Report("Reach", text);
    return Reach::kLocal;
  }

  bool ReadTick(std::string_view key, bool stricter) const {
    const std::string text = Text(key);
    if (text.empty() || text == "0") return false;
    if (text == "1") return true;
    Report(key, text);
    return stricter;
  }

  int ReadLimit(std::string_view key) const {
    const std::string text = Text(key);
    if (text.empty()) return kDefaultLimit;
    const auto number = text::ToInt16(text);
    if (number && *number > 0) return *number;
    Report(key, text);
    return kDefaultLimit;
  }

 private:
  std::string Text(std::string_view key) const {
    return std::string(text::TrimBlanks(section_.Text(key)));
  }

  void Report(std::string_view key, const std::string& text) const {
    program_.errors.LogError("Server.ini [" + std::string(kProtectionSection) + "] " +
                             std::string(key) + ": \"" + text +
                             "\" is not known, so the stricter value holds");
  }

  const settings::Program& program_;
  const settings::Section& section_;
};

}  // namespace

ProtectionOptions LoadProtection(const settings::Program& program,
                                 const ProtectionOptions& former) {
  const settings::Section section(program, kProtectionSection);
  if (section.Fault()) return former;
  const Reader reader(program, section);
  return {.reach = reader.ReadReach(),
          .confine = reader.ReadTick("Confine", true),
          .followLinks = reader.ReadTick("FollowLinks", false),
          .signIn = reader.ReadTick("SignIn", true),
          .honest = reader.ReadTick("Honest", true),
          .messageLimit = reader.ReadLimit("MessageLimit")};
}

bool WriteProtection(settings::Change& change, const settings::Program& program,
                     const ProtectionOptions& options) {
  const auto tick = [](bool value) { return std::string(value ? "1" : "0"); };
  const settings::OptionalValue values[] = {
      {"Reach", "all", ReachText(options.reach)},
      {"Confine", "0", tick(options.confine)},
      {"FollowLinks", "0", tick(options.followLinks)},
      {"SignIn", "0", tick(options.signIn)},
      {"Honest", "0", tick(options.honest)},
      {"MessageLimit", std::to_string(kDefaultLimit), std::to_string(options.messageLimit)}};
  return settings::WriteWhatIsNew(change, program, kProtectionSection, values);
}

}  // namespace core
