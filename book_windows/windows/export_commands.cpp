// The exports of a book.
#include <wx/stopwatch.h>
#include <wx/utils.h>

#include <ctime>

#include "book_windows/windows/book_screen.h"
#include "book_windows/windows/trade_book_grid.h"
#include "foundations/text_tools.h"
#include "grid_base/windows/window_boxes.h"
#include "grid_ops/exports/export_settings.h"
#include "toolkit/dialogs/dialog.h"
#include "toolkit/dialogs/popups.h"

namespace fs = std::filesystem;

namespace {

constexpr long kShownAfterMs = 250;
constexpr std::uint32_t kReportIcon = 6;

// The plug-in has no price divisors: see PriceDivisors.
const PriceDivisors kNoDivisors;

std::int64_t Now() {
  return std::time(nullptr);
}

}  // namespace

GridColumns ExportCommands::Columns() const {
  const CQORPGridColumnsInfo& info = Grid.GetColumnsInfo();
  GridColumns columns;
  for (int i = 0; i < info.GetColumnCount(); ++i)
    columns.push_back({.Name = WideToNarrow(info.GetColumnName(i)),
                       .Visible = info.GetColumnVisible(i),
                       .Order = info.GetColumnOrder(i),
                       .Selected = info.IsColumnSelected(i)});
  return columns;
}

std::vector<GridRowRange> ExportCommands::Selections() const {
  std::vector<GridRowRange> ranges;
  for (int i = 0; i < Grid.GetSelectionCount(); ++i) {
    const CQORPGridRange range = Grid.GetSelection(i);
    ranges.push_back({range.Top, range.Bottom});
  }
  return ranges;
}

void ExportCommands::Report(std::wstring_view text) const {
  const FocusReturn focus(Grid);
  Screen.Terminal.ShowMessage(&Grid, std::wstring(kExportCaption), std::wstring(text), kOkButton, kReportIcon, 0);
}

void ExportCommands::RememberFolder(const CsvCommand& command, const fs::path& proposal, const fs::path& chosen) {
  PluginState& state = Screen.State;
  RememberCsvFolder(command, state.Exports, proposal, chosen);
  if (!command.SavesPath) return;
  std::string folder = FolderText(FolderOf(chosen));
  SaveTradePath(kConfigFile, folder, state.LastTradePath);
}

template <typename Write>
void ExportCommands::ShowRunning(Write write) {
  const wxBusyCursor wait;
  const wxStopWatch begun;
  CQORPProgressOverlay overlay(*Grid.GetRowsWindow());
  write([&](std::size_t done, std::size_t inAll) {
    if (begun.Time() >= kShownAfterMs) overlay.ShowProgress(L"Exporting:", static_cast<int>(100 * done / inAll));
  });
}

// Intentional: reports success whatever became of the file.
template <typename Write>
void ExportCommands::ExportToChosenFile(const CsvCommand& command, Write write) {
  const fs::path proposal = ProposeCsvPath(command, Screen.State.Exports, Grid.GetWorkingFolder(), Now());
  const FocusReturn focus(Grid);
  const auto chosen =
      CQORPFileDialog(&Grid, proposal, std::wstring(kCsvExtension), std::wstring(kCsvFilter)).AskForPath();
  if (!chosen) return;
  ShowRunning([&](const ExportProgress& progress) { write(*chosen, progress); });
  Report(kCsvReport);
  RememberFolder(command, proposal, *chosen);
}

void ExportCommands::WriteCsv(const CsvCommand& command, const fs::path& path, const ExportProgress& progress) {
  Grid.FollowNewRows();
  const GridColumns columns = Columns();
  const std::vector<TradeRecord*> rows = Grid.Shown.Rows.RowRecords();
  const std::vector<GridRowRange> selections = Selections();
  const TradeCache& cache = Screen.State.TradeStore;
  ExportGridCsv(command.Mode, path,
                {.Columns = columns,
                 .Rows = rows,
                 .Selections = selections,
                 .ServerName = cache.ServerName,
                 .Trades = cache.LiveTrades},
                progress);
}

void ExportCommands::ExportCsv(const CsvCommand& command) {
  if (command.Id == kManualExportCommand) return ExportManually(command);
  ExportToChosenFile(command,
                     [&](const fs::path& path, const ExportProgress& progress) { WriteCsv(command, path, progress); });
}

TradeFileRun ExportCommands::TradeFiles(const GridColumns& columns) const {
  return {.Columns = columns,
          .Trades = Screen.State.TradeStore.LiveTrades,
          .Divisors = kNoDivisors,
          .GridFolder = Grid.GetWorkingFolder(),
          .PluginFolder = Screen.State.WorkingFolder,
          .Now = Now()};
}

void ExportCommands::ExportManually(const CsvCommand& command) {
  const GridColumns columns = Columns();
  const TradeFileRun run = TradeFiles(columns);
  if (!Grid.ExchangeFormatFlag)
    return ExportToChosenFile(command, [&](const fs::path& path, const ExportProgress& progress) {
      WriteManualExport(run, false, path, {}, progress);
    });
  ShowRunning([&](const ExportProgress& progress) { WriteManualExport(run, true, {}, {}, progress); });
  ShowPopupMessage(WideToNarrow(ManualExchangeReport(run.Now)));
}

void ExportCommands::WriteExchangeFiles() {
  const GridColumns columns = Columns();
  const TradeFileRun run = TradeFiles(columns);
  ShowRunning([&](const ExportProgress& progress) { WriteExchangeTradeFiles(run, progress); });
  Report(kExchangeReport);
}
