#include "book_windows/model/book.h"

#include <algorithm>

Book::Book(PluginState& plugin, const SecurityMasters& masters, std::string name)
    : Name(std::move(name)), Rows(plugin.TradeStore), Plugin(plugin), Masters(masters) {}

void Book::ShowState() {
  Rows.Filtered = State.Filtered;
  ProfileKey = State.Key(Name, BarId);
  Window->OnTitleChanged();
}

void Book::BeginSecurity(const FilterKey& security, std::string_view scriptName) {
  Rows.Security = security;
  Rows.CollectSecurityRows();
  State.BeginSecurity(BookState::ScriptTitleOf(security.Exchange, scriptName));
  ShowState();
}

void Book::BeginAll() {
  Rows.CopyAllRows();
  State.BeginAll();
  ShowState();
}

void Book::BeginRestored(const std::string& scriptTitle, RestoredState state, const FilterKey& security,
                         std::string_view scriptName) {
  switch (state) {
    case RestoredState::All:
      State.BeginAll();
      return ShowState();
    case RestoredState::Blank:  // takes the trades without a security
      Rows.CollectSecurityRows();
      State.BeginBlank();
      return ShowState();
    case RestoredState::Widened:
      Rows.Security = security;
      State.BeginWidened(scriptTitle);
      return ShowState();
    case RestoredState::Security:
      return BeginSecurity(security, scriptName);
    case RestoredState::Unknown:
      return;
  }
}

void Book::Widen() {
  State.Widen();
  Rows.CopyAllRows();
  RefreshBook(true);
  Window->ShowBar(true);
  Window->FocusGrid();
  ShowState();
}

void Book::NarrowToFilter() {
  State.Narrow();
  ShowState();
  Rows.CollectSecurityRows();
  RefreshBook(true);
}

// A profile may have restored a sort: all numbered trades are its rows then.
void Book::RefreshRows(bool replaced) {
  if (!VirtualModeOn) {
    VirtualModeOn = true;
    Sort.Begin(Window->BeginVirtualMode());
    if (!Sort.SortColumns.empty()) Rows.CopyNumberedRows();
  }
  Window->OnRowsChanged(replaced);
}

void Book::RefreshBook(bool replaced) {
  RefreshRows(replaced);
  if (replaced) RecountTotals();
  Window->OnTotalsChanged();
}

void Book::RecountTotals() {
  Totals.RecountTotals(Rows.Rows, Basis(), Line);
}

void Book::RebuildRows() {
  Rows.RebuildRows();
  RefreshBook(true);
}

void Book::ResortRows() {
  Rows.ResortRows(Sort.States());
  RefreshRows(true);
}

void Book::ToggleSortColumn(int column, bool multiple) {
  const SortStep step = Sort.Toggle(column, multiple);
  if (step != SortStep::Remove) Window->ClearCurrentRow();
  Window->OnSortChanged();
  ResortRows();
}

void Book::KeepMarkedSort(const std::vector<int>& states) {
  if (!Sort.Keep(states)) return;
  if (Sort.SortColumns.empty()) return RebuildRows();
  ResortRows();
}

void Book::OnFilterBarChanged(int column, const std::wstring& text) {
  if (Rows.OnFilterBarChanged(column, text)) RefreshBook(true);
}

void Book::OnFilterBarClearAll() {
  if (!FilterBarActive()) return;
  Rows.OnFilterBarClearAll();
  RefreshBook(true);
}

std::wstring_view Book::EmptyText() const noexcept {
  if (FilterBarActive()) return L"No trade passes the filter";
  if (!State.Filtered) return L"No trades yet";
  return State.BlankFilter ? L"Emptied: F8 shows all trades" : L"No trades of this security yet";
}

bool Book::SelectedSecurity(std::string& exchange, std::string& securityId) {
  const int row = Window->CurrentRow();
  const TradeRecord* record = row < 0 ? nullptr : Rows.RecordAt(static_cast<std::size_t>(row));
  if (record == nullptr) return false;
  exchange = record->Exchange;
  securityId = record->SecurityID;
  return true;
}

void Book::LoadGridSettings() {
  if (!ReadGridSettings(kGridSettingsKey, Settings, Plugin)) return;
  Window->OnSettingsChanged();
  RefreshBook(true);
}

void Book::SaveGridSettings() {
  Settings.Font = Window->Font();
  WriteGridSettings(kGridSettingsKey, Settings, Plugin);
}
