#include "ui/controls/list_columns.h"

#include <wx/listctrl.h>

#include <algorithm>

#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

void ShareWidth(wxListCtrl& list, std::span<const ListColumn> columns, int leastRest) {
  int rest = list.GetClientSize().x;
  int restColumn = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const int column = static_cast<int>(i);
    const wxString longest = Shown(columns[i].longest);
    if (longest.empty()) {
      restColumn = column;
      continue;
    }
    const int width = list.GetTextExtent(longest).x + list.FromDIP(2 * kGap);
    list.SetColumnWidth(column, width);
    rest -= width;
  }
  list.SetColumnWidth(restColumn, std::max(rest, list.FromDIP(leastRest)));
}

}  // namespace

void AddColumns(wxListCtrl& list, std::span<const ListColumn> columns, int leastRest) {
  for (const ListColumn& column : columns) list.AppendColumn(Shown(column.heading));
  ShareWidth(list, columns, leastRest);
  // Else the columns would keep the list from getting narrower again.
  list.SetMinSize({list.FromDIP(leastRest), -1});
  list.Bind(wxEVT_SIZE, [&list, columns, leastRest](wxSizeEvent& event) {
    event.Skip();
    ShareWidth(list, columns, leastRest);
  });
}

}  // namespace ui
