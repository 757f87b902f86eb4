#pragma once

// The columns of a report list: most have room for their longest text, one gets the rest.

#include <span>

class wxListCtrl;

namespace ui {

struct ListColumn {
  const char* heading;
  const char* longest;  // of a text that it has room for; "" gets the rest
};

/// Adds the columns, and shares the width among them whenever the size of the list changes.
/// `leastRest`: the least width of the column that gets the rest, in pixels at 100 %. `columns`
/// must outlive the list.
void AddColumns(wxListCtrl& list, std::span<const ListColumn> columns, int leastRest);

}  // namespace ui
