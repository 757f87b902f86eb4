#pragma once

// The commands of a line protocol as a table: one row per command, with the word that a client
// sends and what answers it. All three servers keep their commands in such a table, so that each
// protocol can be read on one page.

#include <algorithm>
#include <string_view>

#include "net/task.h"

namespace core {

/// `Interpreter` has the functions; `Request` is what they are given, `Answer` what is sent back.
template <class Interpreter, class Request, class Answer>
struct Command {
  using Function = Answer (Interpreter::*)(Request);
  using Exchange = net::Task<Answer> (Interpreter::*)(Request);

  std::string_view word;
  std::string_view reply = {};  // the fixed answer, where neither function is set
  Function function = nullptr;  // answers at once
  Exchange exchange = nullptr;  // may wait, for a data connection or a disk; others run meanwhile
};

/// The row of `word`, compared exactly, or null.
template <class Table>
const typename Table::value_type* FindCommand(const Table& table, std::string_view word) {
  const auto row = std::find_if(table.begin(), table.end(),
                                [word](const auto& command) { return command.word == word; });
  return row == table.end() ? nullptr : &*row;
}

}  // namespace core
