#pragma once

// The commands of a line protocol as a table with one row per command: the word that a client sends
// and the function or text that answers it. All three servers use it, so that each protocol can be
// read on one page.

#include <algorithm>
#include <string_view>

#include "net/task.h"

namespace core {

/// `Interpreter` has the functions; `Request` is their argument, `Answer` the reply.
template <class Interpreter, class Request, class Answer>
struct Command {
  using Function = Answer (Interpreter::*)(Request);
  using Exchange = net::Task<Answer> (Interpreter::*)(Request);

  std::string_view word;
  std::string_view reply = {};  // the fixed reply if both functions are null
  Function function = nullptr;  // answers at once
  Exchange exchange = nullptr;  // may suspend, for a data connection or the disk
  bool needsLogin = false;      // where clients have to sign in
};

/// The row for `word`, matched exactly, or null.
template <class Table>
const typename Table::value_type* FindCommand(const Table& table, std::string_view word) {
  const auto row = std::find_if(table.begin(), table.end(),
                                [word](const auto& command) { return command.word == word; });
  return row == table.end() ? nullptr : &*row;
}

}  // namespace core
