#include "grid_ops/exports/csv_export.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "foundations/date_time.h"
#include "grid_ops/columns/cell_text.h"

namespace fs = std::filesystem;

namespace {

// A cell of a line.
struct Cell {
  CellPrinter Print;
  bool Comma;  // follows
};
using Cells = std::vector<Cell>;

constexpr fs::path::value_type kSeparators[] = {'\\', '/', 0};

int CountOf(std::span<const GridColumn> columns) {
  return static_cast<int>(columns.size());
}

// Column indexes by their place on the screen. Of two columns with the same place the higher index wins.
template <typename Chosen>
std::map<int, int> ByOrder(std::span<const GridColumn> columns, Chosen chosen) {
  std::map<int, int> indexes;
  for (int i = 0; i < CountOf(columns); ++i)
    if (const GridColumn& column = columns[static_cast<std::size_t>(i)]; chosen(column)) indexes[column.Order] = i;
  return indexes;
}

class CsvFile {
 public:
  CsvFile(const fs::path& path, const CsvSource& source) : Source(source), File(path) {}

  void AddTitle(int column, bool comma) {
    const std::string& name = Source.Columns[static_cast<std::size_t>(column)].Name;
    LineBuffer& line = File.Room(name.size() + 1);
    line.Append(name);
    if (comma) line.Append(',');
  }

  void AddLine(const Cells& cells, std::string_view server, const TradeRecord& record) {
    LineBuffer& line = File.Room(kLineEnd.size() + cells.size() * (LongestTradeCell(server) + 1));
    char* to = PrintText(line.Tail(), kLineEnd);
    for (const Cell& cell : cells) {
      to = cell.Print(to, server, record);
      *to = ',';
      to += cell.Comma ? 1 : 0;
    }
    line.EndAt(to);
  }

  const CsvSource& Source;

 private:
  ExportFile File;
};

void WriteAllColumns(CsvFile& file, const ExportProgress& progress) {
  const int count = CountOf(file.Source.Columns);
  Cells cells;
  for (int column = 0; column < count; ++column) {
    file.AddTitle(column, column != count - 1);
    cells.push_back({TradeCellPrinter(column), column != count - 1});
  }
  VisitTrades(file.Source.Trades, progress, [&](std::string_view server, const TradeMap::Entry& trade) {
    file.AddLine(cells, server, *trade.Record);
  });
}

// Intentional: the comma is missing after the column whose place is the count of visible columns minus 1. Behind a
// hidden column that is not the last one.
void WriteVisibleColumns(CsvFile& file, const ExportProgress& progress) {
  const auto indexes = ByOrder(file.Source.Columns, [](const GridColumn& column) { return column.Visible; });
  const int last = static_cast<int>(indexes.size()) - 1;
  Cells cells;
  for (const auto& [order, column] : indexes) {
    file.AddTitle(column, order != last);
    cells.push_back({TradeCellPrinter(column), order != last});
  }
  ProgressTeller teller(progress, file.Source.Rows.size());
  for (const TradeRecord* record : file.Source.Rows) {
    file.AddLine(cells, file.Source.ServerName, *record);
    teller.RowDone();
  }
}

std::size_t RowsIn(const GridRowRange& range, std::size_t rows) {
  if (range.Top < 0 || range.Bottom < range.Top || static_cast<std::size_t>(range.Top) >= rows) return 0;
  return std::min(static_cast<std::size_t>(range.Bottom) + 1, rows) - static_cast<std::size_t>(range.Top);
}

// Intentional: the header is in screen order with a comma after every title, the lines are in index order without a
// comma after the last column of the grid.
void WriteSelectedColumns(CsvFile& file, const ExportProgress& progress) {
  const CsvSource& source = file.Source;
  for (const auto& [order, column] : ByOrder(source.Columns, [](const GridColumn& each) { return each.Selected; }))
    file.AddTitle(column, true);
  Cells cells;
  for (int column = 0; column < CountOf(source.Columns); ++column)
    if (source.Columns[static_cast<std::size_t>(column)].Selected)
      cells.push_back({TradeCellPrinter(column), column != CountOf(source.Columns) - 1});
  std::size_t rowsInAll = 0;
  for (const GridRowRange& range : source.Selections) rowsInAll += RowsIn(range, source.Rows.size());
  ProgressTeller teller(progress, rowsInAll);
  for (const GridRowRange& range : source.Selections)
    for (std::size_t i = 0; i < RowsIn(range, source.Rows.size()); ++i) {
      file.AddLine(cells, source.ServerName, *source.Rows[static_cast<std::size_t>(range.Top) + i]);
      teller.RowDone();
    }
}

struct Mode {
  std::string_view Name;
  void (*Write)(CsvFile& file, const ExportProgress& progress);
};
constexpr Mode kModes[] = {
    {"All Columns", WriteAllColumns},
    {"Visible Columns", WriteVisibleColumns},
    {"Selected Columns", WriteSelectedColumns},
};

fs::path& LastOf(const CsvCommand& command, ExportFolders& folders) {
  return folders.Last[static_cast<std::size_t>(&command - kCsvCommands)];
}

// Intentional: an empty folder leaves the separator in front of the name.
fs::path Joined(fs::path folder, const fs::path& name) {
  folder += fs::path::preferred_separator;
  folder += name;
  return folder;
}

}  // namespace

void ExportGridCsv(std::string_view mode, const fs::path& path, const CsvSource& source,
                   const ExportProgress& progress) {
  CsvFile file(path, source);
  for (const Mode& known : kModes)
    if (known.Name == mode) known.Write(file, progress);
}

fs::path ProposeCsvPath(const CsvCommand& command, ExportFolders& folders, const fs::path& gridFolder,
                        std::int64_t now) {
  if (command.Id == kSelectedColumnsCommand) folders.ExportFolder = Joined(gridFolder, "CSV");
  const fs::path& last = LastOf(command, folders);
  const fs::path start = last.empty() && command.StartsFromBase ? folders.ExportFolder : last;
  return Joined(start,
                std::string(command.Stem) + FormatTimeText(now, std::string(command.DatePattern), false) + ".CSV");
}

void RememberCsvFolder(const CsvCommand& command, ExportFolders& folders, const fs::path& proposal,
                       const fs::path& chosen) {
  LastOf(command, folders) = command.Last == CsvCommand::Remembers::Proposal ? proposal : FolderOf(chosen);
}

fs::path FolderOf(const fs::path& path) {
  const fs::path::string_type& text = path.native();
  const std::size_t end = text.find_last_of(kSeparators);
  return end == fs::path::string_type::npos ? fs::path() : fs::path(text.substr(0, end));
}
