#include "web/answer_options.h"

#include <string>

#include "platform/text_case.h"
#include "settings/optional_values.h"
#include "settings/section.h"
#include "text/conversions.h"
#include "text/strings.h"
#include "web/web_options.h"

namespace ModWeb {
namespace {

constexpr std::string_view kAnswers = "Answers";
constexpr std::string_view kHttp = "HTTP";
constexpr std::string_view kSpeed = "Speed";
constexpr std::string_view kBodyLimit = "BodyLimit";

std::string AnswersIn(const settings::Section& section) {
  return std::string(text::TrimBlanks(section.Text(kAnswers)));
}

bool SaysHttp(std::string_view answers) { return platform::UpperCase(answers) == kHttp; }

std::optional<std::int16_t> ReadNumber(const settings::Program& program,
                                       const settings::Section& section, std::string_view key,
                                       std::int16_t least, std::int16_t most) {
  const std::string text = section.Text(key);
  if (text::TrimBlanks(text).empty()) return std::nullopt;
  const auto number = text::ToInt16(text);
  if (number && *number >= least && *number <= most) return number;
  program.errors.LogError("Server.ini [" + std::string(kSettingsSection) + "] " + std::string(key) +
                          ": \"" + text + "\" is not from " + std::to_string(least) + " to " +
                          std::to_string(most));
  return std::nullopt;
}

}  // namespace

AnswerOptions LoadAnswerOptions(const settings::Program& program,
                                const settings::Section& section) {
  return {.http = SaysHttp(AnswersIn(section)),
          .speed = ReadNumber(program, section, kSpeed, 0, INT16_MAX),
          .bodyLimit = ReadNumber(program, section, kBodyLimit, 1, kLargestBodyLimit)
                           .value_or(AnswerOptions().bodyLimit)};
}

bool WriteAnswerOptions(settings::Change& change, const settings::Program& program,
                        const AnswerOptions& options) {
  const settings::Section section(program, kSettingsSection);
  // Any other word says the same as none.
  std::string answers = AnswersIn(section);
  if (SaysHttp(answers) != options.http) answers = options.http ? kHttp : "";
  const settings::OptionalValue values[] = {
      {kAnswers, "", answers},
      {kSpeed, "", options.speed ? std::to_string(*options.speed) : ""},
      {kBodyLimit, std::to_string(AnswerOptions().bodyLimit), std::to_string(options.bodyLimit)}};
  return settings::WriteWhatIsNew(change, program, kSettingsSection, values);
}

}  // namespace ModWeb
