#include "ui/pages/connection_list.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "core/activity_text.h"
#include "text/date_time.h"
#include "text/strings.h"
#include "ui/controls/copying.h"
#include "ui/controls/layout.h"
#include "ui/controls/toolkit_text.h"

namespace ui {
namespace {

using net::ConnectionReport;

enum Column : unsigned { kWho, kWhat, kPercent, kAmount, kSpeed, kLeft, kSince, kColumns };

// The columns' headings, and the longest text that each has room for. "What" gets the rest.
struct ColumnLooks {
  const char* heading;
  const char* longest;
};
constexpr std::array<ColumnLooks, kColumns> kLooks = {{
    {"谁", "188.188.188.188"},
    {"在做什么", ""},
    {"进度", "100%100%"},
    {"字节", "888 MB / 888 MB"},
    {"速度", "888 MB/s"},
    {"还需", "88 分 88 秒"},
    {"开始于", "08:08:08"},
}};

constexpr int kLeastWhat = 110;

std::uint64_t BytesOf(const ConnectionReport& connection) {
  const net::Traffic& traffic = connection.activity.traffic;
  return traffic.received + traffic.sent;
}

bool IsSame(const ConnectionReport& left, const ConnectionReport& right) {
  return std::tie(left.protocol, left.slot, left.since) ==
         std::tie(right.protocol, right.slot, right.since);
}

}  // namespace

// The rows by their numbers, which are never used again.
class ConnectionList::Model : public wxDataViewModel {
 public:
  struct Row {
    std::uintptr_t number;
    ConnectionReport connection;
    std::uint64_t speed = 0;  // bytes per second
    core::TrafficRate rate = {};
  };

  void Show(const std::vector<ConnectionReport>& connections,
            core::TrafficRate::Clock::time_point now) {
    RemoveEnded(connections);
    for (const ConnectionReport& connection : connections) {
      const auto row = std::find_if(rows_.begin(), rows_.end(), [&](const Row& each) {
        return IsSame(each.connection, connection);
      });
      Row& shown = row == rows_.end() ? Add(connection) : *row;
      if (shown.connection.activity.began != connection.activity.began) shown.rate = {};
      shown.connection = connection;
      const net::Traffic speed = shown.rate.Next(connection.activity.traffic, now);
      // Halfway to the last measurement: steady enough to read.
      shown.speed = (shown.speed + speed.received + speed.sent) / 2;
      ItemChanged(ItemOf(shown));
    }
  }

  const std::vector<Row>& Rows() const { return rows_; }

  std::map<std::string, std::string> names;  // by address

  const Row* RowOf(const wxDataViewItem& item) const {
    const auto number = reinterpret_cast<std::uintptr_t>(item.GetID());
    const auto row = std::find_if(rows_.begin(), rows_.end(),
                                  [number](const Row& each) { return each.number == number; });
    return row == rows_.end() ? nullptr : &*row;
  }

  std::vector<std::string> Cells(const Row& row) const {
    std::vector<std::string> cells;
    for (unsigned column = 0; column < kColumns; ++column) cells.push_back(Cell(row, column));
    return cells;
  }

  std::string Cell(const Row& row, unsigned column) const {
    const net::Activity& activity = row.connection.activity;
    switch (column) {
      case kWho:
        return WithName(row.connection.address);
      case kWhat:
        return core::ActivityText(activity);
      case kPercent:
        return core::ProgressText(activity);
      case kAmount:
        return core::ByteText(BytesOf(row.connection)) +
               (activity.total == 0 ? "" : " / " + core::ByteText(activity.total));
      case kSpeed:
        return row.speed == 0 ? "" : core::ByteText(row.speed) + "/s";
      case kLeft: {
        const auto left = SecondsLeft(row);
        return left ? core::DurationText(*left) : "";
      }
      default: {
        constexpr std::size_t kDate = 11;  // leaves the time
        return text::DateTimeText(row.connection.since).substr(kDate);
      }
    }
  }

 private:
  static wxDataViewItem ItemOf(const Row& row) {
    return wxDataViewItem(reinterpret_cast<void*>(row.number));
  }

  static std::optional<std::chrono::seconds> SecondsLeft(const Row& row) {
    const net::Activity& activity = row.connection.activity;
    if (activity.total == 0 || row.speed == 0 || activity.traffic.sent >= activity.total) {
      return std::nullopt;
    }
    return std::chrono::seconds((activity.total - activity.traffic.sent) / row.speed);
  }

  void RemoveEnded(const std::vector<ConnectionReport>& connections) {
    for (auto row = rows_.begin(); row != rows_.end();) {
      const bool isOpen =
          std::any_of(connections.begin(), connections.end(),
                      [&](const ConnectionReport& each) { return IsSame(each, row->connection); });
      if (isOpen) {
        ++row;
        continue;
      }
      const wxDataViewItem item = ItemOf(*row);
      row = rows_.erase(row);
      ItemDeleted({}, item);
    }
  }

  Row& Add(const ConnectionReport& connection) {
    rows_.push_back({.number = ++lastNumber_, .connection = connection});
    ItemAdded({}, ItemOf(rows_.back()));
    return rows_.back();
  }

  unsigned GetColumnCount() const override { return kColumns; }
  wxString GetColumnType(unsigned column) const override {
    return column == kPercent ? "long" : "string";
  }
  void GetValue(wxVariant& value, const wxDataViewItem& item, unsigned column) const override {
    const Row* row = RowOf(item);
    if (row == nullptr) return;
    if (column == kPercent) {
      value = static_cast<long>(core::Percent(row->connection.activity).value_or(0));
    } else {
      value = Shown(Cell(*row, column));
    }
  }
  bool HasValue(const wxDataViewItem& item, unsigned column) const override {
    const Row* row = RowOf(item);
    return row != nullptr && (column != kPercent || row->connection.activity.total > 0);
  }
  bool SetValue(const wxVariant&, const wxDataViewItem&, unsigned) override { return false; }
  wxDataViewItem GetParent(const wxDataViewItem&) const override { return {}; }
  bool IsContainer(const wxDataViewItem& item) const override { return !item.IsOk(); }
  unsigned GetChildren(const wxDataViewItem& item, wxDataViewItemArray& children) const override {
    if (item.IsOk()) return 0;
    for (const Row& row : rows_) children.push_back(ItemOf(row));
    return static_cast<unsigned>(rows_.size());
  }

  int Compare(const wxDataViewItem& first, const wxDataViewItem& second, unsigned column,
              bool ascending) const override {
    const Row* left = RowOf(first);
    const Row* right = RowOf(second);
    if (left == nullptr || right == nullptr) return 0;
    const int order = Order(ascending ? *left : *right, ascending ? *right : *left, column);
    if (order != 0) return order;
    return left->number < right->number ? -1 : 1;
  }

  int Order(const Row& left, const Row& right, unsigned column) const {
    const auto compare = [](const auto& one, const auto& other) {
      return one < other ? -1 : other < one ? 1 : 0;
    };
    switch (column) {
      case kPercent:
        return compare(core::Percent(left.connection.activity),
                       core::Percent(right.connection.activity));
      case kAmount:
        return compare(BytesOf(left.connection), BytesOf(right.connection));
      case kSpeed:
        return compare(left.speed, right.speed);
      case kLeft:
        return compare(SecondsLeft(left), SecondsLeft(right));
      case kSince:
        return compare(left.connection.since, right.connection.since);
      default:
        return compare(Cell(left, column), Cell(right, column));
    }
  }

  std::string WithName(const std::string& address) const {
    const auto name = names.find(address);
    return name == names.end() ? address : address + "（" + name->second + "）";
  }

  std::vector<Row> rows_;
  std::uintptr_t lastNumber_ = 0;
};

ConnectionList::ConnectionList(wxWindow* parent)
    : wxDataViewCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                     wxDV_SINGLE | wxDV_ROW_LINES | wxBORDER_THEME),
      model_(new Model) {
  AssociateModel(model_);
  model_->DecRef();  // the control holds it now
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    ShareWidth();
  });
  LetCopy(*this, [this] { return SelectedText(); });
}

void ConnectionList::AppendColumns() {
  for (unsigned column = 0; column < kColumns; ++column) {
    const ColumnLooks& looks = kLooks.at(column);
    wxDataViewRenderer* renderer = nullptr;
    if (column == kPercent) {
      renderer = new wxDataViewProgressRenderer();
    } else {
      renderer = new wxDataViewTextRenderer();
      renderer->EnableEllipsize();
    }
    AppendColumn(new wxDataViewColumn(Shown(looks.heading), renderer, column, WidthOf(column),
                                      wxALIGN_LEFT,
                                      wxDATAVIEW_COL_RESIZABLE | wxDATAVIEW_COL_SORTABLE));
  }
  ShareWidth();
}

int ConnectionList::WidthOf(unsigned column) const {
  return GetTextExtent(Shown(kLooks.at(column).longest)).x + FromDIP(2 * kGap);
}

void ConnectionList::ShareWidth() {
  if (wxDataViewCtrl::GetColumnCount() == 0) return;
  int rest = GetClientSize().x - FromDIP(kGap);
  for (unsigned column = 0; column < kColumns; ++column) {
    if (column != kWhat) rest -= WidthOf(column);
  }
  GetColumn(kWhat)->SetWidth(std::max(rest, FromDIP(kLeastWhat)));
}

void ConnectionList::ShowConnections(const std::vector<ConnectionReport>& connections,
                                     core::TrafficRate::Clock::time_point now) {
  // GTK complains about columns of a list that has never been seen.
  if (wxDataViewCtrl::GetColumnCount() == 0) AppendColumns();
  model_->Show(connections, now);
}

void ConnectionList::SetNames(std::map<std::string, std::string> names) {
  model_->names = std::move(names);
}

std::optional<ConnectionReport> ConnectionList::Selected() const {
  const Model::Row* row = model_->RowOf(GetSelection());
  return row == nullptr ? std::nullopt : std::optional(row->connection);
}

int ConnectionList::RowCount() const { return static_cast<int>(model_->Rows().size()); }

std::vector<std::string> ConnectionList::Cells(int row) const {
  return model_->Cells(model_->Rows().at(static_cast<std::size_t>(row)));
}

std::string ConnectionList::SelectedText() const {
  const Model::Row* row = model_->RowOf(GetSelection());
  return row == nullptr ? "" : text::Joined(model_->Cells(*row), "\t");
}

}  // namespace ui
