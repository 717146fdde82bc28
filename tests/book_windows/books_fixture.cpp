#include "tests/book_windows/books_fixture.h"

#include "grid_ops/columns/trade_columns.h"
#include "toolkit/system/make_child.h"

void BooksTest::SetUp() {
  GuiTest::SetUp();
  Desk.emplace();
  Start();
}

void BooksTest::TearDown() {
  if (Main != nullptr) Stop();
  Desk.reset();
  GuiTest::TearDown();
}

void BooksTest::Start() {
  Desk->StartAgain();
  Main = &MakeChild<CQORPFrame>(nullptr, wxID_ANY, L"Terminal", wxRect(0, 0, 1500, 900));
  Main->Show();
  Screen =
      std::make_unique<TradeBookScreen>(State(), *Desk->Functions, BookCallbacks{BookDesk::OnPluginMessage(), 78, 79});
  Desk->Connect(Registry());
  WaitForActivation(*Main);
}

void BooksTest::Stop() {
  Main->Destroy();
  Main = nullptr;
  Pump();
  Screen.reset();
}

CTradeBookBar& BooksTest::Open() {
  Main->Raise();
  WaitForActivation(*Main);
  Main->SetFocus();
  Pump();
  Registry().OnBookCommand();
  CTradeBookBar& bar = WindowOf(*Registry().BarsById.rbegin()->second);
  WaitForActivation(bar);
  return bar;
}

void BooksTest::FocusGrid(CTradeBookBar& bar) {
  ASSERT_TRUE(PumpUntil([&] {
    bar.FocusGrid();
    Pump();
    return bar.HoldsFocus();
  }));
}

void BooksTest::Beat() {
  Registry().RepaintAllBooks();
  Pump();
}

void BooksTest::ShowOnly(CTradeBookGrid& grid, const std::vector<int>& columns) {
  for (int i = 0; i < kTradeColumnCount; ++i) grid.GetColumnsInfo().SetColumnVisible(i, false);
  for (const int column : columns) grid.GetColumnsInfo().SetColumnVisible(column, true);
  grid.AdjustLayout();
}

std::wstring BooksTest::Ids(const CTradeBookGrid& grid) {
  std::wstring ids;
  CQORPGridCell cell;
  for (int row = 0; grid.ShowCell(row, 2, cell); ++row) ids += cell.Text;
  return ids;
}
