#include "toolkit/model/spoken_row.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace {

// Four columns, of which Client is hidden, and 13,612 rows; a text is that of its row and column.
class SpokenRow : public testing::Test {
 protected:
  void SetUp() override {
    for (const wchar_t* title : {L"Side", L"Client", L"Quantity", L"Price"})
      Columns.InsertColumn(Columns.GetColumnCount(), title, 50);
    Columns.SetColumnVisible(1, false);
    Selection.SetRows(13'612);
    Selection.SelectOnly(2);
    for (const int row : {2, 3}) Texts[{row, 0}] = L"Buy", Texts[{row, 1}] = L"C1", Texts[{row, 3}] = L"1313.25";
    Texts[{2, 2}] = L"2";
  }
  std::wstring Say() {
    return Speech.Next({Columns, Selection, Current, [this](int row, int column) -> std::wstring_view {
                          return Texts[{row, column}];
                        }});
  }
  void Go(int row) { Selection.SelectOnly(row), Speech.MoveRow(); }
  // New trades: all texts move down as well.
  void Insert(int before, int rows) {
    std::map<std::pair<int, int>, std::wstring> moved;
    for (const auto& [at, text] : Texts) moved[{at.first + (at.first >= before ? rows : 0), at.second}] = text;
    Texts = moved;
    Selection.InsertRows(before, rows), Speech.RowsInserted(before, rows);
  }

  CQORPGridColumnsInfo Columns;
  RowSelection Selection;
  RowSpeech Speech;
  std::map<std::pair<int, int>, std::wstring> Texts;
  int Current = 0;
};

TEST_F(SpokenRow, SaysWhatChanged) {
  const std::tuple<const char*, std::function<void()>, std::wstring> steps[] = {
      {"at first", [] {}, L"Side: Buy, column 1 of 3, row 3 of 13,612, Quantity: 2, Price: 1313.25"},
      {"nothing", [] {}, L""},
      {"a row with other texts", [&] { Go(3); }, L"Side: Buy, row 4 of 13,612, Price: 1313.25"},
      {"a row with the same texts",
       [&] {
         Texts[{4, 0}] = L"Buy", Texts[{4, 3}] = L"1313.25", Go(4);
       },
       L"Side: Buy, row 5 of 13,612, Price: 1313.25"},
      {"rows above", [&] { Insert(0, 3); }, L""},
      {"rows below", [&] { Insert(900, 2); }, L""},
      {"an empty column", [&] { Current = 2; }, L"Quantity: empty, column 2 of 3"},
      {"a sorted column", [&] { Current = 3, Columns.SetSortColumn(3, false, true); },
       L"Price, sorted descending: 1313.25, column 3 of 3"},
      {"one of two sorted columns", [&] { Columns.SetSortColumn(0, true, true), Current = 0; },
       L"Side, sorted ascending 2 of 2: Buy, column 1 of 3"},
      {"a column that moves", [&] { Columns.SetColumnDisplayPos(1, 0); },
       L"Side, sorted ascending 2 of 2: Buy, column 2 of 3"},
      {"its row again", [&] { Go(6); }, L"Side: Buy, row 7 of 13,617, Price: 1313.25"},
      {"texts",
       [&] {
         Texts[{6, 2}] = L"7", Texts[{6, 0}] = L"Sell";
       },
       L"Side: Sell, Quantity: 7"},
      {"a text that goes",
       [&] {
         Texts[{6, 2}] = L"";
       },
       L"Quantity: empty"},
      {"a hidden text",
       [&] {
         Texts[{6, 1}] = L"C2";
       },
       L""},
      {"another row in that place",
       [&] {
         Texts[{5, 0}] = L"Buy", Selection.SelectOnly(5);
       },
       L"Side: Buy, row 6 of 13,617, Quantity: 2, Price: 1313.25"},
      {"the same row in another place",
       [&] {
         for (int at : {0, 2, 3}) Texts[{9, at}] = Texts[{5, at}];
         Selection.SelectOnly(9);
       },
       L""},
      {"a deselected row", [&] { Selection.Toggle(9); }, L"not selected"},
      {"a row beside the selected ones", [&] { Selection.MoveCurrent(5), Speech.MoveRow(); },
       L"Side: Buy, row 6 of 13,617, not selected, Quantity: 2, Price: 1313.25"},
      {"a selected row", [&] { Selection.Toggle(5); }, L"selected"},
      {"a sort, which puts another row there",
       [&] {
         Columns.SetSortColumn(0, false, true), Texts[{5, 0}] = L"Sell";
       },
       L"Side, sorted descending 2 of 2: Sell, column 2 of 3, row 6 of 13,617, Quantity: 2, Price: 1313.25"},
      {"the focus", [&] { Speech.Forget(), Columns.RemoveSortColumn(0); },
       L"Side: Sell, column 2 of 3, row 6 of 13,617, Quantity: 2, Price: 1313.25"},
      {"no current row", [&] { Selection.Clear(), Current = -1; }, L"no current row of 13,617"},
      {"no rows", [&] { Selection.SetRows(0), Speech.Forget(); }, L"no rows"},
      {"a column without rows", [&] { Current = 3; }, L"Price, sorted descending, column 3 of 3"},
  };
  for (const auto& [what, change, expected] : steps) {
    change();
    EXPECT_EQ(Say(), expected) << what;
  }
}

TEST_F(SpokenRow, IsBounded) {
  Texts[{2, 0}] = std::wstring(60'000, L'x');
  Texts[{2, 3}] = L"a\tb\r\nc";
  EXPECT_EQ(Say(),
            L"Side: " + std::wstring(120, L'x') + L"..., column 1 of 3, row 3 of 13,612, Quantity: 2, Price: a b  c");
  for (int column = 4; column < 1000; ++column) {
    Columns.InsertColumn(column, L"Another", 50);
    Texts[{2, column}] = L"text";
  }
  Speech.Forget();
  const std::wstring said = Say();
  EXPECT_LT(said.size(), 600u);
  EXPECT_TRUE(said.ends_with(L"Another: text, 973 more columns"));
}

}  // namespace
