// ListGrid: what the terminal's own lists have in common: a grid with filter fields, sort, copy, saving as CSV or
// workbook, and columns, filter and sort that are remembered.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "terminal/lists/list_rows.h"
#include "terminal/program/window_memory.h"
#include "toolkit/grid/grid_ctrl.h"

// A click on a header sorts: rising, falling, then the order of the source. The current row stays with its source row.
class ListGrid : public CQORPGridCtrl {
 public:
  struct Form {
    const wchar_t* Name;   // for screen readers
    const char* FileName;  // proposed by "Save As...", without extension
    ListOrder Order = ListOrder::OldestFirst;
    bool FilterShown = false;               // at first
    const wchar_t* Empty = L"Nothing yet";  // why there are no rows
  };
  // The source must outlive the grid.
  ListGrid(ListSource& source, const Form& form) : Rows(source, form.Order), Look(form) {}
  bool Create(wxWindow* parent, int id) override;

  // Called for Enter or a double click on a row.
  std::function<void()> Opened;

  // Shows what has changed in the source; call on the beat.
  void ShowChanges();
  const ListRows& Shown() const noexcept { return Rows; }
  // The current row; nothing for none.
  std::optional<ListRow> CurrentRow() const { return RowAt(GetCurSel()); }
  // False if the row is not shown.
  bool Select(ListRow row);
  // As shown; empty for a place out of range.
  std::wstring TextAt(int place, std::size_t column) const;

  ListPlace GetPlace() const;
  void SetPlace(const ListPlace& place);

  std::wstring EmptyText() const override { return Rows.HasFilters() ? L"No row passes the filter" : Look.Empty; }
  void ToggleSortColumn(int column) override;
  void OnFilterBarChanged(int column, const std::wstring& text) override;
  void OnFilterBarClearAll() override;
  void OnShowContextMenu(const wxPoint& point) override;
  std::span<const CQORPMenuItem> ContextMenu() const override;
  bool PreTranslateMessage(wxKeyEvent& event) override;

 protected:
  enum Command : int { kCopy = 1, kSave, kShowFilter, kResetFilter, kFirstOwnCommand };
  // The commands that every list has. A derived grid with more has a menu of its own, with these first.
  static constexpr CQORPMenuItem kListMenu[] = {
      {CQORPMenuItem::Kind::Command, 0, kCopy, L"&Copy"},
      {CQORPMenuItem::Kind::Command, 0, kSave, L"&Save As..."},
      {CQORPMenuItem::Kind::Separator, 0},
      {CQORPMenuItem::Kind::Command, 0, kShowFilter, L"S&how Filter"},
      {CQORPMenuItem::Kind::Command, 0, kResetFilter, L"Reset &Filter"},
  };
  // Colours of a cell.
  virtual void Dress(ListRow /*row*/, std::size_t /*column*/, CQORPGridCell& /*cell*/) const {}
  // A command of the derived grid.
  virtual void RunOwnCommand(int /*id*/) {}

 private:
  std::optional<ListRow> RowAt(int place) const;
  bool ShowCell(int place, int column, CQORPGridCell& cell) const;
  void Sort(std::optional<std::size_t> column, bool rising);
  void RunCommand(int id);
  void Save();
  std::optional<std::size_t> ColumnOf(const std::wstring& title) const;
  struct Current {
    int Place;
    std::optional<ListRow> Row;
  };
  Current NoteCurrent() const;
  // Rows have come, gone or changed places; the current row stays with its source row.
  void Follow(const Current& former);

  ListRows Rows;
  Form Look;
};

// The rows that a grid shows, with its visible columns in the order of the screen.
class ShownSheet : public SheetSource {
 public:
  explicit ShownSheet(const ListGrid& grid);
  std::size_t Rows() const override { return List.Count(); }
  std::span<const SheetColumn> Columns() const override { return Titles; }
  SheetValue ValueAt(std::size_t row, std::size_t column) const override {
    const auto shown = List.RowAt(row);
    return shown ? List.Source().Value(*shown, Places[column]) : SheetValue();
  }

 private:
  const ListRows& List;
  std::vector<std::size_t> Places;  // columns of the source
  std::vector<SheetColumn> Titles;
};
