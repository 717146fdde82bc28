// A book's menu by its texts, from the command to its effect on grid, clipboard, disk and terminal.
#include <wx/clipbrd.h>
#include <wx/dcclient.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include "foundations/date_time.h"
#include "foundations/text_tools.h"
#include "grid_ops/exports/export_settings.h"
#include "tests/book_windows/books_fixture.h"
#include "tests/support/files.h"

namespace fs = std::filesystem;

namespace {

class CommandsTest : public BooksTest {
 protected:
  static std::wstring ClipboardText() {
    wxTextDataObject text;
    const wxClipboardLocker locker;
    return wxTheClipboard->GetData(text) ? text.GetText().ToStdWstring() : L"nothing";
  }
};

TEST_F(CommandsTest, MenuHasTheseEntries) {
  std::wstring menu;
  for (const CQORPMenuItem& item : CTradeBookGrid::GridMenu())
    menu += std::to_wstring(item.Level) + L' ' + std::to_wstring(item.Id) + item.Text + L'|';
  EXPECT_EQ(menu,
            L"0 30015Exchange Trade Format|0 0Column Header|1 30017Field Choose|1 30018Show All|1 30019Remove All|1 0|"
            L"1 30016Remove Sort|1 30020Size To Fit|1 30022Save Column Profile|1 30021Reset|0 0Export CSV|"
            L"1 30010All Columns|1 30011Visible Columns|1 30013Selected Columns|1 30012Manual Export|0 0|"
            L"0 57634&Copy|0 30003Copy as &HTML|0 30004Select A&ll|0 0|0 30023Show Filter|0 30024Reset Filter|"
            L"0 30008Property|");
  CTradeBookBar& book = Open();
  CTradeBookGrid& grid = *book.Grid();
  EXPECT_FALSE(grid.RunContextMenu({L"Copy as HTML"})) << "there are no rows";
  EXPECT_FALSE(grid.RunContextMenu({L"Export CSV", L"Selected Columns"})) << "no row is current";
  EXPECT_TRUE(grid.RunContextMenu({L"Show Filter"}));
  ASSERT_TRUE(grid.EditFilter(11));
  Press(*grid.GetFilterEdit(), WXK_ESCAPE);
  EXPECT_TRUE(book.IsBarShown()) << "the field's Escape is not the book's";
  EXPECT_TRUE(grid.RunContextMenu({L"Hide Filter"}));
  EXPECT_FALSE(grid.IsFilterBarEnabled());
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10);
  Beat();
  EXPECT_TRUE(grid.RunContextMenu({L"Copy as HTML"}));
  EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", L"Selected Columns"}));
  for (const auto& [command, columns] : {std::pair{L"Remove All", 0u}, {L"Show All", 37u}, {L"Reset", 35u}}) {
    EXPECT_TRUE(grid.RunContextMenu({L"Column Header", command}));
    EXPECT_EQ(grid.GetColumnsInfo().DisplayColumns().size(), columns);
    EXPECT_EQ(grid.HeaderRect(0).IsEmpty(), columns < 37) << "shown at once";
  }
  EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Field Choose"}));
  EXPECT_TRUE(Answers.Said.back().starts_with(L"Trade - FieldChoose"));
  wxUpdateUIEvent update(30018);
  grid.GetEventHandler()->ProcessEvent(update);
  EXPECT_TRUE(update.GetSetEnabled() && update.GetEnabled());
  for (const int foreign : {0, 30005}) {
    wxCommandEvent command(wxEVT_MENU, foreign);
    EXPECT_FALSE(grid.GetEventHandler()->ProcessEvent(command)) << "may be the terminal's: " << foreign;
  }
}

TEST_F(CommandsTest, MenuMeansTheBookThatItIsOpenedOver) {
  CTradeBookBar &first = Open(), &second = OpenGold();
  first.DockControlBar(DockSide::Left);
  second.DockControlBar(DockSide::Right);
  FocusGrid(second);
  // The user's keys while the menu is up, which has a loop of its own until it closes: the last entry is Property.
  constexpr int kPatience = 50;
  int beats = 0;
  wxTimer keys;
  keys.Bind(wxEVT_TIMER, [&beats](wxTimerEvent&) {
    wxUIActionSimulator().Char(++beats > kPatience ? WXK_ESCAPE : beats % 2 == 1 ? WXK_UP : WXK_RETURN);
  });
  keys.Start(100);
  RightClick(*first.Grid()->GetHeaderWindow(), wxPoint(20, 8));
  EXPECT_EQ(fakeTerminal.SentNumbers().back(), 32003);
  EXPECT_EQ(Part(fakeTerminal.Sent.back(), 15, 48),
            Hex("23 3275") + Word(78, 8) + Hex("23 4F75") + Word(79, 8) + Hex("23 3175") + AddressOf(first.Grid()));
  EXPECT_EQ(TradeBookScreen::FocusedGrid(), first.Grid());
}

TEST_F(CommandsTest, CopiesOneRangeOfAtMost10001Rows) {
  for (std::uint32_t id = 1; id <= 10003; ++id) Desk->Trade(id, "COMEX", "GC1", 1, 5, 10);
  CTradeBookGrid& grid = *Open().Grid();
  ShowOnly(grid, {18, 2});
  wxWindow& rows = *grid.GetRowsWindow();
  // The first row, the key that extends the selection, whether another row is selected, and the message and the lines.
  const std::tuple<int, int, bool, const wchar_t*, std::ptrdiff_t> kRows[] = {
      {2, WXK_END, false, L"", 10001},
      {-1, 0, false, L"Content of the grid is too large, please make selection and repeat command.", 10001},
      {1, WXK_END, false, L"Selection is too large, please make smaller selection and repeat command.", 10001},
      {2000, 0, true, L"This command can't be used on multiple selection.", 10001},
      {10002, 0, false, L"", 1},
  };
  for (const auto& [from, shiftKey, oneMore, said, lines] : kRows) {
    SCOPED_TRACE(from);
    grid.SetCurSel(from);
    if (shiftKey != 0) Press(rows, shiftKey, kShift);
    if (oneMore)
      for (const int key : {int{WXK_UP}, int{WXK_UP}, int{WXK_SPACE}}) Press(rows, key, kControl);
    Answers.Said.clear();
    grid.SetFocus();
    Press(rows, 'C', kControl);
    EXPECT_EQ(Answers.Said, std::vector<std::wstring>(*said != 0, std::wstring(L"Trade Book: ") + said));
    EXPECT_EQ(std::ranges::count(ClipboardText(), L'\n'), lines) << "a refused copy leaves the former one";
  }
  Desk->Trade(10004, "COMEX", "GC1", 1, 5, 10);
  EXPECT_TRUE(grid.RunContextMenu({L"Copy"}));
  EXPECT_EQ(ClipboardText().substr(0, 3), L"1\t5") << "rows that came in since the beat move the selected one";
  Desk->Trade(10005, "COMEX", "GC9", 1, 5, 10);
  EXPECT_TRUE(grid.RunContextMenu({L"Copy as HTML"}));
  EXPECT_EQ(Answers.Said.back(), L"Trade Book: Selection was copied to the clipboard as HTML");
  EXPECT_EQ(ClipboardText(), L"nothing");
  EXPECT_TRUE(grid.RunContextMenu({L"Select All"}));
  EXPECT_EQ(grid.GetSelection(0).Bottom, 10004) << "of all rows, as the copy had them counted";
  // Intentional: the guard checks this grid, the copy is of the grid with the focus.
  CTradeBookBar& other = OpenGold();
  ShowOnly(*other.Grid(), {2});
  FocusGrid(other);
  other.Grid()->SetCurSel(2);
  grid.SetCurSel(0);
  Desk->Trade(10005, "COMEX", "GC9", 1, 5, 10);
  EXPECT_TRUE(grid.RunContextMenu({L"Copy"}));
  EXPECT_EQ(ClipboardText().substr(0, 5), L"10002");
}

TEST_F(CommandsTest, ExportsAskWriteReportAndRemember) {
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10.5);
  Desk->Trade(2, "NSECM", "GC2", 2, 7, 20);
  CTradeBookGrid& grid = *Open().Grid();
  ShowOnly(grid, {11, 18, 20});
  for (const int column : {2, 18}) grid.GetColumnsInfo().SelectColumn(column, true);
  grid.GetColumnsInfo().SetColumnDisplayPos(0, 20);
  grid.SetFilterText(11, L"gc2");
  Pump();
  const std::string today = FormatTimeText(std::time(nullptr), "yyyyMMdd", false);
  const std::string visible = "TradeBook_Visible" + today + ".CSV", selected = "TradeBook_Selected" + today + ".CSV";
  const fs::path &folder = Desk->Folder,
                 root = fs::path() += fs::path::preferred_separator + fs::path(visible).native();
  fs::create_directories(folder / "other");
  // The command, the file that the user chooses, the one proposed, and the bytes.
  const std::tuple<const wchar_t*, fs::path, fs::path, std::string> kRows[] = {
      {L"Visible Columns", {}, root, ""},
      {L"Visible Columns", folder / "other" / "v.csv", root, "Price,SecurityID,Quantity\r\n20.000000,GC2,7"},
      {L"Selected Columns", folder / "s.csv", folder / "CSV" / selected, "VELDTradeID,Quantity,\r\n2,7,"},
      {L"Visible Columns", folder / "nowhere" / "x.csv", folder / "other" / visible, ""},
  };
  for (const auto& [command, saveAs, proposal, bytes] : kRows) {
    SCOPED_TRACE(saveAs);
    if (saveAs == folder / "s.csv") Desk->Trade(3, "NSECM", "GC2", 2, 9, 20);  // the selected row is that of trade 2
    Answers.AnswerAnew(saveAs);
    EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", command}));
    EXPECT_EQ(Answers.Proposals, std::vector{proposal});
    EXPECT_EQ(ReadFile(saveAs), bytes);
    // Intentional: whatever became of the file.
    const std::vector<std::wstring> report{L"Trade Book: Trade Book CSV Successfully exported..!!"};
    EXPECT_EQ(Answers.Said, saveAs.empty() ? std::vector<std::wstring>() : report);
  }
  Answers.SaveAs = folder / "all.csv";
  EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", L"All Columns"}));
  const std::string all = ReadFile(Answers.SaveAs);
  EXPECT_EQ(all.substr(0, 26), "Server,UserID,VELDTradeID,");
  EXPECT_EQ(std::ranges::count(all, '\n'), 3) << "whatever the filter says";
  const std::string saved = "[PATH]\r\nTrade=" + ToUpperText(FolderText(folder / "nowhere")) + "\r\n";
  EXPECT_TRUE(ReadFile(folder / "config.ini").ends_with(saved)) << "that of the visible columns alone";
}

TEST_F(CommandsTest, TradeFilesFollowTheirDescriptions) {
  Desk->Trade(1, "COMEX", "GC1", 1, 5, 10.5);
  Desk->Trade(2, "NSECM", "GC2", 2, 7, 20);
  const fs::path &folder = Desk->Folder, files = folder / "ExchangeTradeFormat";
  WriteFile(folder / "EXCHANGETRADEFORMAT.TXT", "VELDTradeID\nBranch No\nTrade Status");
  WriteFile(folder / "TRADEBOOKEXPORT.TXT", "VELDTradeID,Trade\nQuantity,Lots\nServer,Hidden\n");
  CTradeBookGrid& grid = *Open().Grid();
  const std::string day = FormatTimeText(std::time(nullptr), "MMddyy", false).substr(0, 4) + "TRD.txt";
  EXPECT_TRUE(grid.RunContextMenu({L"Exchange Trade Format"}));
  EXPECT_EQ(ReadFile(files / "FO" / day), "1       ,1  ,11,\r\n");
  EXPECT_EQ(ReadFile(files / "CM" / day), "2       ,1  ,11,\r\n");
  EXPECT_EQ(Answers.Said, std::vector<std::wstring>{L"Trade Book: Exchange Trade File Sucessfully Write"});
  Answers.SaveAs = folder / "manual.csv";
  EXPECT_TRUE(grid.RunContextMenu({L"Export CSV", L"Manual Export"}));
  EXPECT_EQ(ReadFile(Answers.SaveAs), "Trade,Lots,\r\n1,5,\r\n2,7,");
  EXPECT_EQ(Answers.Said.back(), L"Trade Book: Trade Book CSV Successfully exported..!!");
  WriteFile(folder / "config.ini", "[TRADECSV]\r\nExchangeFormatCSV = TRUE\r\n");
  Answers.Proposals.clear();
  EXPECT_TRUE(OpenGold().Grid()->RunContextMenu({L"Export CSV", L"Manual Export"}));
  EXPECT_TRUE(Answers.Proposals.empty()) << "its files have names of their own";
  const std::string other = FormatTimeText(std::time(nullptr), "ddMMyy", false).substr(0, 4) + "TRD.txt";
  EXPECT_TRUE(fs::exists(files / "FO" / other));
  EXPECT_NE(wxWindow::FindWindowByLabel(other + " Successfully exported..!!"), nullptr) << "the popup";
}

TEST_F(CommandsTest, SizeToFitMeasuresEveryRow) {
  CTradeBookGrid& grid = *Open().Grid();
  wxClientDC dc(grid.GetRowsWindow());
  dc.SetFont(grid.GetGridFont());
  const auto fitted = [&](int column) {
    EXPECT_TRUE(grid.RunContextMenu({L"Column Header", L"Size To Fit"}));
    EXPECT_EQ(grid.HeaderRect(2).width, grid.GetColumnsInfo().GetColumnWidth(2)) << "shown at once";
    return grid.GetColumnsInfo().GetColumnWidth(column);
  };
  grid.GetColumnsInfo().SetSortColumn(12, true, true);
  EXPECT_EQ(fitted(12), dc.GetTextExtent(L"Symbol...").x + 20);
  EXPECT_EQ(fitted(11), dc.GetTextExtent(L"SecurityID").x + 20);
  grid.RemoveSort();
  std::uint32_t id = 0;
  for (const char* security : {"i", "WWWW \xE9\xE9\xE9\xE9 WWWW", "AV"}) Desk->Trade(++id, "COMEX", security, 1, 5, 1);
  Beat();
  grid.GetColumnsInfo().SetColumnLocked(10, true);
  grid.GetColumnsInfo().SetColumnWidth(10, 211);
  EXPECT_EQ(fitted(11), dc.GetTextExtent(NarrowToWide("WWWW \xE9\xE9\xE9\xE9 WWWW")).x + 10);
  EXPECT_EQ(fitted(18), std::max(dc.GetTextExtent(L"5").x + 10, grid.OnGetColumnMinWidth(18)));
  EXPECT_EQ(fitted(10), 211) << "locked";
}

}  // namespace
