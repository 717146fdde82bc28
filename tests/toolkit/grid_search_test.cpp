#include "toolkit/model/grid_search.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using Cells = std::vector<GridCellPlace>;
using Start = GridSearch::Start;

// A grid in which these cells hold the text; it fails if it is asked about rows that it has not.
struct Desk {
  int Rows = 0;
  std::vector<int> Columns;
  Cells Holding;

  bool Holds(int row, int column) const { return std::ranges::count(Holding, GridCellPlace{row, column}) != 0; }
  void Insert(int before, int rows) {
    Rows += rows;
    for (GridCellPlace& cell : Holding)
      if (cell.Row >= before) cell.Row += rows;
  }
};

class DeskFinder : public GridFinder {
 public:
  explicit DeskFinder(const Desk& desk) : Shown(desk) {}
  int FindRow(int row, int step, int count) override {
    EXPECT_TRUE(count > 0 && row >= 0 && row < Shown.Rows);
    EXPECT_TRUE(row + step * (count - 1) >= 0 && row + step * (count - 1) < Shown.Rows);
    for (; count > 0; --count, row += step)
      if (std::ranges::any_of(Shown.Columns, [&](int column) { return Holds(row, column); })) return row;
    return -1;
  }
  bool Holds(int row, int column) override { return Shown.Holds(row, column); }

 private:
  const Desk& Shown;
};

GridSearch Begin(const Desk& desk, const Start& start) {
  GridSearch search;
  search.Begin(std::make_unique<DeskFinder>(desk), desk.Columns, desk.Rows, start);
  return search;
}

bool Never() {
  return false;
}
bool Always() {
  return true;
}

TEST(GridSearch, GoesFromCellToCellAndRoundTheEnds) {
  // The columns stand in the order 2, 0, 1; column 3 is hidden.
  const Desk desk{4, {2, 0, 1}, {{1, 2}, {1, 1}, {3, 0}, {0, 3}}};
  constexpr GridCellPlace kNone;
  const std::tuple<const char*, Start, GridCellPlace, bool> rows[] = {
      {"from the top", {}, {1, 2}, false},
      {"the row whole", {{1, -1}}, {1, 2}, false},
      {"at the cell", {{1, 2}}, {1, 2}, false},
      {"behind it", {{1, 2}, true}, {1, 1}, false},
      {"behind the last column", {{1, 1}, true}, {3, 0}, false},
      {"over the end", {{3, 0}, true}, {1, 2}, true},
      {"from the bottom", {kNone, false, false}, {3, 0}, false},
      {"up from the cell", {{1, 1}, false, false}, {1, 1}, false},
      {"up behind it", {{1, 1}, true, false}, {1, 2}, false},
      {"up before the first column", {{1, 2}, true, false}, {3, 0}, true},
      {"up, the row whole", {{1, -1}, false, false}, {1, 1}, false},
      {"of a hidden column", {{1, 3}, true}, {1, 2}, false},
      {"of a row that is gone", {{9, 1}, true}, {1, 2}, false},
  };
  for (const auto& [what, start, found, wrapped] : rows) {
    GridSearch search = Begin(desk, start);
    EXPECT_EQ(search.Advance(Never), GridSearchState::Found) << what;
    EXPECT_EQ(search.Found(), found) << what;
    EXPECT_EQ(search.HasWrapped(), wrapped) << what;
  }
}

TEST(GridSearch, EndsAtItsFirstCell) {
  for (const bool downwards : {true, false}) {
    const Desk one{600, {0, 1}, {{300, 1}}}, none{600, {0, 1}, {}}, columnless{5, {}, {}}, rowless{0, {0}, {}};
    GridSearch search = Begin(one, {{300, 1}, true, downwards});
    EXPECT_EQ(search.Advance(Never), GridSearchState::Found) << "the cell itself comes last";
    EXPECT_TRUE(search.Found() == (GridCellPlace{300, 1}) && search.HasWrapped());
    for (const Desk* desk : {&none, &columnless, &rowless}) {
      search = Begin(*desk, {{3, 0}, true, downwards});
      EXPECT_EQ(search.Advance(Never), GridSearchState::NotFound);
    }
    search = Begin(none, {});
    search.Stop();
    EXPECT_EQ(search.Advance(Never), GridSearchState::Idle);
  }
}

TEST(GridSearch, TellsHowFarItIs) {
  const Desk desk{1001, {0}, {}};
  GridSearch search = Begin(desk, {});
  std::vector<int> percents;
  while (search.Advance(Always) == GridSearchState::Searching) percents.push_back(search.Percent());
  EXPECT_TRUE(std::ranges::is_sorted(percents));
  EXPECT_TRUE(percents.size() > 4 && percents.front() == 0 && percents.back() >= 99);
}

// Rows come in between the slices: each cell that was there at the begin is found, and nothing is asked that is gone.
TEST(GridSearch, FollowsRowsThatComeAndGo) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    std::mt19937 dice(seed);
    const auto below = [&dice](int end) { return static_cast<int>(dice() % static_cast<unsigned>(end)); };
    Desk desk{2000 + below(1000), {0, 1, 2}, {{below(2000), below(3)}}};
    const bool goes = seed % 4 == 0;  // the last rows go, with the cell perhaps
    const Start start{{below(desk.Rows), below(3)}, seed % 2 == 0, below(2) == 0};
    GridSearch search = Begin(desk, start);
    while (search.Advance(Always) == GridSearchState::Searching) {
      const int rows = below(400), before = below(2) == 0 ? 0 : below(desk.Rows + 1);
      desk.Insert(before, rows);
      search.InsertRows(before, rows);
      if (!goes || below(4) != 0) continue;
      desk.Rows /= 2;
      search.SetRows(desk.Rows);
    }
    if (goes) continue;
    ASSERT_EQ(search.State(), GridSearchState::Found) << seed;
    EXPECT_EQ(search.Found(), desk.Holding[0]) << seed;
  }
}

TEST(CellTextFinder, IgnoresCase) {
  const std::vector<std::wstring> texts{L"Infosys \xDC", L"", L"infosys", L"x"};
  const auto textOf = [&](int row, int column) -> const std::wstring& {
    return texts[static_cast<std::size_t>(row + 2 * column)];
  };
  const std::tuple<const wchar_t*, std::vector<int>, int, int, int> rows[] = {
      {L"SYS \xFC", {0, 1}, 0, 1, 0}, {L"SYS", {1}, 0, 1, 0}, {L"X", {0, 1}, 0, 1, 1},    {L"X", {0}, 0, 1, -1},
      {L"", {0, 1}, 0, 1, -1},        {L"s", {1}, 1, -1, 0},  {L"s s", {0, 1}, 0, 1, -1},
  };
  for (const auto& [text, columns, row, step, found] : rows)
    EXPECT_EQ(CellTextFinder(text, columns, textOf).FindRow(row, step, 2), found) << text;
}

}  // namespace
