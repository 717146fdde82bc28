// Book: one open book: name and bar id, security, state, rows, sort, totals, title and key. The trade cache tells it of
// trades, its window of what the user does.
#pragma once

#include "book_windows/model/book_state.h"
#include "book_windows/model/book_window.h"
#include "book_windows/model/plugin_state.h"
#include "grid_ops/rows/book_rows.h"
#include "grid_ops/rows/book_totals.h"
#include "grid_ops/rows/row_sort.h"

class Book : public TradeBook {
 public:
  Book(PluginState& plugin, const SecurityMasters& masters, std::string name);

  bool FilterBarActive() const override { return Rows.Filters.Active(); }
  void MakeRoom(std::size_t rows) override { Rows.MakeRoom(rows); }
  bool AdmitRow(TradeRecord& record) override { return Rows.AdmitRow(record); }
  void UpdateTotals(const TradeRecord& record) override { Totals.UpdateTotals(record, Basis(), Line); }
  void RefilterRow(TradeRecord& record) override { Rows.RefilterRow(record); }
  void CopyAllRows(const TradeNumberMap& trades, std::int32_t nextTradeNumber) override {
    Rows.CopyAllRows(trades, nextTradeNumber);
  }
  void ClearRows() override { Rows.ClearRows(); }

  // The states of a book; each updates title and key. BookRegistry enters the key where the book has one.
  void BeginSecurity(const FilterKey& security, std::string_view scriptName);
  void BeginAll();
  // As stored; the rows of all and widened books come with the terminal's next trades.
  void BeginRestored(const std::string& scriptTitle, RestoredState state, const FilterKey& security,
                     std::string_view scriptName);
  void Widen();
  void NarrowToFilter();

  // Updates the window: rows, totals, screen. Totals are summed anew if rows were replaced.
  void RefreshBook(bool replaced);
  void RecountTotals();
  void RebuildRows();

  // A click on the header of a column.
  void ToggleSortColumn(int column, bool multiple);
  // The headers lost marks: ends the sort by those columns. Without a sort column left, the newest row is on top again.
  void KeepMarkedSort(const std::vector<int>& states);

  void OnFilterBarChanged(int column, const std::wstring& text);
  void OnFilterBarClearAll();

  // Why it has no rows, for the user.
  std::wstring_view EmptyText() const noexcept;

  // The Exchange and SecurityID of the current row; false without one.
  bool SelectedSecurity(std::string& exchange, std::string& securityId);

  void LoadGridSettings();
  void SaveGridSettings();

  const std::string Name;
  std::uint32_t BarId = 0;
  std::string ProfileKey;  // the book's key; empty in a restored book of unknown state
  BookState State;
  BookRows Rows;
  BookSort Sort;
  BookTotals Totals;
  SummaryLine Line;
  GridSettings Settings;
  bool VirtualModeOn = false;
  BookWindow* Window = nullptr;

 private:
  void ShowState();
  void RefreshRows(bool replaced);
  void ResortRows();
  AverageBasis Basis() const { return {State.Filtered, Plugin.SelectedKey, Plugin.RestoredKey, Masters}; }

  PluginState& Plugin;
  const SecurityMasters& Masters;
};
