// GridFinder: asks the rows of a grid for a text. GridSearch: a search through the cells of a grid, cell by cell in
// display order, in slices, so that a long search holds nothing up.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

// A text is held if the shown text of a cell contains it, ignoring case. An empty text is held by no cell.
class GridFinder {
 public:
  virtual ~GridFinder() = default;
  // The first of that many rows from the row on, downwards with step 1 or upwards with -1, that has a cell which holds
  // the text; -1 for none. All of these rows are rows of the grid.
  virtual int FindRow(int row, int step, int count) = 0;
  virtual bool Holds(int row, int column) = 0;
};

struct GridCellPlace {
  int Row = -1;
  int Column = -1;
  bool operator==(const GridCellPlace&) const = default;
};

// The finder of a grid that has only texts: reads every cell. The text function returns that of a cell, valid until the
// next call.
class CellTextFinder : public GridFinder {
 public:
  using CellText = std::function<const std::wstring&(int row, int column)>;
  CellTextFinder(const std::wstring& text, std::vector<int> columns, CellText textOf);

  int FindRow(int row, int step, int count) override;
  bool Holds(int row, int column) override;

 private:
  std::wstring Wanted;  // in lower case
  std::vector<int> Columns;
  CellText TextOf;
  std::wstring Lower;
};

enum class GridSearchState { Idle, Searching, Found, NotFound };

// A search looks at each cell once: from its first cell to the end, then from the other end to the cell before the
// first one. Rows that are inserted during a search are found if they stand where it has not been yet; the others move
// along.
//
// The rest of the first row is a part of its own at the end, so all other rows are asked whole.
class GridSearch {
 public:
  struct Start {
    GridCellPlace Cell{};  // without a row: the first one, or the last one upwards; without a column: all of the row
    bool Behind = false;   // begins behind the cell, which comes last
    bool Downwards = true;
  };

  // The columns in display order.
  void Begin(std::unique_ptr<GridFinder> finder, std::vector<int> columns, int rows, const Start& start);
  void Stop();
  // Goes on until the end or until the time is up, about which it asks every few hundred rows.
  GridSearchState Advance(const std::function<bool()>& isTimeUp);

  // The rows of the grid have changed so; see CQORPGridCtrl::SetVirtualRows.
  void InsertRows(int before, int rows);
  void SetRows(int rows);

  GridSearchState State() const noexcept { return Now; }
  const std::vector<int>& SearchedColumns() const noexcept { return Columns; }
  const GridCellPlace& Found() const noexcept { return Cell; }
  // The search went on at the other end.
  bool HasWrapped() const noexcept { return Wrapped; }
  int Percent() const noexcept;

 private:
  enum class Part { Head, Rows, Tail };

  int PlaceOf(int column) const;
  // The first place of a row in the direction of the search, and the one behind its last.
  int FrontPlace() const noexcept { return Step > 0 ? 0 : static_cast<int>(Columns.size()) - 1; }
  int EndPlace() const noexcept { return Step > 0 ? static_cast<int>(Columns.size()) : -1; }
  void AdvanceOnce();
  bool FindInRow(int row, int place, int end);
  void SearchHead();
  void SearchRows();
  void SearchTail();

  std::unique_ptr<GridFinder> Finder;
  std::vector<int> Columns;
  GridSearchState Now = GridSearchState::Idle;
  Part Next = Part::Head;
  int Rows = 0;
  int Step = 1;
  int FirstRow = 0;
  int FirstPlace = 0;  // in the first row; one before or behind the columns if the search begins in the next row
  int Row = 0;         // the next one of Part::Rows; one before or behind the rows at an end
  int Looked = 0;      // rows
  bool Wrapped = false;
  GridCellPlace Cell;
};
