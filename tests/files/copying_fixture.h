#pragma once

// Copies real files into the folder "to" of a temporary folder.

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "files/copying.h"
#include "tests/support/server_fixture.h"

namespace test {

using files::Copying;
using State = Copying::State;
using Why = Copying::Why;
namespace fs = std::filesystem;

class CopyingFiles : public test::ProgramFixture {
 protected:
  CopyingFiles() { fs::create_directory(Home().Path("to")); }

  Copying Of(std::vector<std::string> names, const char* target = "to") const {
    for (std::string& name : names) name = Home().Text(name);
    return {std::move(names), Home().Text(target)};
  }

  // Everything in the target, with the size of files: "a.txt=3 pics/ ".
  std::string Target() const {
    std::vector<std::string> entries;
    for (const auto& entry : fs::recursive_directory_iterator(Home().Path("to"))) {
      const std::string name = entry.path().lexically_relative(Home().Path("to")).generic_string();
      entries.push_back(entry.is_directory() ? name + "/"
                                             : name + "=" + std::to_string(entry.file_size()));
    }
    std::sort(entries.begin(), entries.end());
    std::string all;
    for (const std::string& entry : entries) all += entry + " ";
    return all;
  }

  // Until it ends or asks.
  static State Run(Copying& copying) {
    State state = State::kWorks;
    while (state == State::kWorks) state = copying.Step();
    return state;
  }

  // "name:why name:why ", where why is the number of the reason.
  static std::string Problems(const Copying& copying) {
    std::string all;
    for (const Copying::Problem& problem : copying.Result().problems) {
      all += problem.name + ":" + std::to_string(static_cast<int>(problem.why)) + " ";
    }
    return all;
  }

  static std::string Because(const std::string& name, Why why) {
    return name + ":" + std::to_string(static_cast<int>(why)) + " ";
  }
};

}  // namespace test
