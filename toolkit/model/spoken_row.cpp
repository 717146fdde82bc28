#include "toolkit/model/spoken_row.h"

#include <algorithm>

#include "foundations/text_tools.h"

namespace {

constexpr std::size_t kMostText = 120;   // of one cell
constexpr std::size_t kMostCells = 360;  // of all cells but the current one

bool IsBlank(wchar_t character) {
  return static_cast<char32_t>(character) < U' ';
}

// A pair of 16-bit characters is not cut.
std::wstring Speakable(std::wstring_view text) {
  std::wstring spoken(text.substr(0, kMostText));
  std::ranges::replace_if(spoken, IsBlank, L' ');
  if (spoken.size() == text.size()) return spoken;
  if (spoken.back() >= 0xD800 && spoken.back() <= 0xDBFF) spoken.pop_back();
  return spoken + L"...";
}

void Append(std::wstring& sentence, const std::wstring& part) {
  if (part.empty()) return;
  if (!sentence.empty()) sentence += L", ";
  sentence += part;
}

std::wstring SortOf(const CQORPGridColumnsInfo& columns, int column) {
  const int state = columns.GetColumnState(column);
  if (state == 0) return {};
  const std::wstring sort = state > 0 ? L", sorted ascending" : L", sorted descending";
  const int first = columns.GetSortPriority(column);
  int count = 0;
  for (int other = 0; other < columns.GetColumnCount(); ++other) count += columns.GetColumnState(other) != 0 ? 1 : 0;
  return count < 2 ? sort : sort + L" " + std::to_wstring(first + 1) + L" of " + std::to_wstring(count);
}

std::wstring PlaceOf(const CQORPGridColumnsInfo& columns, int column) {
  const std::size_t count = columns.DisplayColumns().size();
  return L"column " + std::to_wstring(columns.GetColumnOrder(column) + 1) + L" of " + std::to_wstring(count);
}

std::wstring PlaceOf(const RowSelection& selection) {
  const int row = selection.GetCurrent(), rows = selection.GetRows();
  if (rows == 0) return L"no rows";
  if (row < 0) return L"no current row of " + GroupedDigits(rows);
  const std::wstring place = L"row " + GroupedDigits(row + 1) + L" of " + GroupedDigits(rows);
  return selection.Contains(row) ? place : place + L", not selected";
}

// Appends cells until they are enough.
class CellList {
 public:
  explicit CellList(const CQORPGridColumnsInfo& columns) : Columns(columns) {}
  void Add(int column, const std::wstring& text) {
    if (Text.size() < kMostCells)
      Append(Text, Columns.GetColumnName(column) + L": " + (text.empty() ? L"empty" : text));
    else
      ++More;
  }
  std::wstring Take() const { return More == 0 ? Text : Text + L", " + std::to_wstring(More) + L" more columns"; }

 private:
  const CQORPGridColumnsInfo& Columns;
  std::wstring Text;
  int More = 0;
};

}  // namespace

void RowSpeech::RowsInserted(int before, int rows) {
  if (Last.Row >= before) Last.Row += rows;
}

RowSpeech::Look RowSpeech::LookAt(const SpokenGrid& grid) {
  Look now;
  now.Row = grid.Selection.GetCurrent();
  now.Selected = now.Row >= 0 && grid.Selection.Contains(now.Row);
  if (grid.Columns.GetColumnOrder(grid.CurrentColumn) >= 0) {
    now.Title = grid.Columns.GetColumnName(grid.CurrentColumn) + SortOf(grid.Columns, grid.CurrentColumn);
    now.Place = PlaceOf(grid.Columns, grid.CurrentColumn);
  }
  if (now.Row >= 0)
    for (const int column : grid.Columns.DisplayColumns())
      now.Cells.push_back({column, Speakable(grid.Cell(now.Row, column))});
  return now;
}

std::wstring RowSpeech::Whole(const SpokenGrid& grid, const Look& now, bool withColumn, bool withRow) {
  std::wstring sentence = withColumn ? now.Title : std::wstring();
  CellList others(grid.Columns);
  for (const Cell& cell : now.Cells) {
    if (cell.Column == grid.CurrentColumn)
      sentence = (withColumn ? now.Title : grid.Columns.GetColumnName(cell.Column)) + L": " +
                 (cell.Text.empty() ? L"empty" : cell.Text);
    else if (!cell.Text.empty())
      others.Add(cell.Column, cell.Text);
  }
  if (withColumn) Append(sentence, now.Place);
  if (withRow) Append(sentence, PlaceOf(grid.Selection)), Append(sentence, others.Take());
  return sentence;
}

bool RowSpeech::IsNew(const Cell& cell) const {
  return std::ranges::find(Last.Cells, cell) == Last.Cells.end();
}

// In any order of the columns.
bool RowSpeech::HasNewTexts(const Look& now) const {
  return now.Cells.empty() != Last.Cells.empty() ||
         std::ranges::any_of(now.Cells, [this](const Cell& cell) { return IsNew(cell); });
}

// A cell that is empty now is a change as well.
std::wstring RowSpeech::Changes(const SpokenGrid& grid, const Look& now) const {
  CellList changed(grid.Columns);
  const auto add = [&](const Cell& cell) {
    if (IsNew(cell)) changed.Add(cell.Column, cell.Text);
  };
  for (const Cell& cell : now.Cells)
    if (cell.Column == grid.CurrentColumn) add(cell);
  for (const Cell& cell : now.Cells)
    if (cell.Column != grid.CurrentColumn) add(cell);
  return changed.Take();
}

std::wstring RowSpeech::Next(const SpokenGrid& grid) {
  Look now = LookAt(grid);
  const bool column = !Known || now.Title != Last.Title || now.Place != Last.Place;
  const bool texts = HasNewTexts(now);
  const bool row = !Known || Moved || (texts && (column || now.Row != Last.Row));
  std::wstring sentence;
  if (row || column)
    sentence = Whole(grid, now, column, row);
  else if (texts)
    sentence = Changes(grid, now);
  else if (now.Selected != Last.Selected)
    sentence = now.Selected ? L"selected" : L"not selected";
  Last = std::move(now);
  Known = true;
  Moved = false;
  return sentence;
}
