#include "ftp/command_text.h"
#include "ftp/data_address.h"
#include "ftp/path_mapping.h"
#include "tests/fuzz/fuzz_input.h"
#include "text/wildcards.h"

// No part is longer than the command, and the path of a name begins with its directory's text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text = fuzz::Text(data, size);
  fuzz::Require(ModFtp::CharacterCount(text) <= text.size());
  fuzz::Require(ModFtp::CommandWord(text).size() <= 3 * text.size());
  fuzz::Require(ModFtp::CutTransferType(text).size() <= 4);
  static_cast<void>(ModFtp::CutRestart(text));
  static_cast<void>(ModFtp::AsksForHelp(text));
  if (const auto port = ModFtp::CutPortArgument(text)) {
    fuzz::Require(port->low.size() <= text.size());
  }
  if (const auto name = ModFtp::CutArgument(text, ModFtp::kAfterFourLetters)) {
    fuzz::Require(name->size() < text.size());
    fuzz::Require(ModFtp::LocalPath("C:\\root", "C:\\root\\here\\", *name).starts_with("C:\\root"));
    static_cast<void>(ModFtp::ChangedDirectory("C:\\root\\", "C:\\root\\here\\", *name));
    fuzz::Require(text::MatchesWildcard(*name, "*"));
  }
  return 0;
}
