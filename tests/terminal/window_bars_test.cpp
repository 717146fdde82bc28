// The bars of the terminal with the rows of a day: positions, chart, log, market watch.
#include <wx/clipbrd.h>
#include <wx/image.h>

#include <algorithm>

#include "platform/locale.h"
#include "tests/terminal/window_session_fixture.h"
#include "tests/toolkit/dialog_answers.h"

namespace {

class WindowBarsTest : public WindowSessionTest {};

std::string CopiedText() {
  wxTextDataObject copied;
  EXPECT_TRUE(wxTheClipboard->Open() && wxTheClipboard->GetData(copied));
  wxTheClipboard->Close();
  return copied.GetText().ToStdString();
}

TEST_F(WindowBarsTest, PositionsAreShownBySecurityAndByClient) {
  const auto row = [this] {
    std::wstring text;
    const PositionsGrid& grid = Positions().Grid();
    for (const int column : grid.GetColumnsInfo().DisplayColumns())
      text += grid.TextAt(0, static_cast<std::size_t>(column)) + L"|";
    return text;
  };
  WaitForEnd();
  EXPECT_EQ(row(), L"||||||||||||") << "a hidden bar costs nothing";
  Session->Commands().Run(TerminalCommand::Positions);
  Positions().ShowChanges();
  EXPECT_EQ(row(), L"ARCA|IBM|IBM|BIG BLUE|0|100|-100|182.50|182.50|0.00|0.00|0.00|");
  EXPECT_EQ(Positions().Sums().Text(), L"Bought 0 Sold 100 Net -100 Realised 0.00 Open 0.00 Total 0.00 ");
  EXPECT_TRUE(Positions().Grid().RunContextMenu({L"By Client"}));
  Press(*Positions().Grid().GetRowsWindow(), 'I', kControl);
  EXPECT_EQ(row(), L"ARCA|IBM|IBM|BIG BLUE|C1001|0|100|-100|182.50|182.50|0.00|0.00|0.00|");
  EXPECT_TRUE(Positions().Grid().RunContextMenu({L"Average Cost"}));
  Press(*Positions().Grid().GetRowsWindow(), 'I', kControl);
  Pump();
  int paints = 0;
  Positions().Grid().GetRowsWindow()->Bind(wxEVT_PAINT, [&](wxPaintEvent& event) {
    event.Skip();
    ++paints;
  });
  EXPECT_TRUE(PumpUntil([&] {
    paints = 0;
    Positions().ShowChanges();
    Pump();
    return paints == 0;
  })) << "nothing has changed";

  Answers.clear();
  const std::string before = Log();
  Positions().Grid().SetCurSel(0);
  Ask(static_cast<const CQORPDockingControlBar*>(&Positions()));
  EXPECT_EQ(Answers, (Texts{WireMessage(32023, WireText(55010, "ARCA") + WireText(55104, "IBM"))}));
  Press(*Positions().Grid().GetRowsWindow(), WXK_RETURN);
  EXPECT_EQ(Log(), before + "command\n");
  Positions().Grid().SetFilterText(static_cast<int>(PositionList::kClientColumn), L"C2");
  EXPECT_EQ(Positions().Sums().Text(), L"Bought 0 Sold 0 Net 0 Realised 0.00 Open 0.00 Total 0.00 ");
  Close();
  Open();
  WaitForEnd();
  EXPECT_TRUE(Positions().IsBarShown());
  Positions().ShowChanges();
  EXPECT_EQ(row(), L"|||||||||||||") << "the filter is kept";
  EXPECT_TRUE(Positions().Grid().RunContextMenu({L"Average Cost"})) << "first in, first out is kept";
  EXPECT_TRUE(Positions().Grid().RunContextMenu({L"By Security"}));
  EXPECT_EQ(row(), L"ARCA|IBM|IBM|BIG BLUE|0|100|-100|182.50|182.50|0.00|0.00|0.00|") << "and no hidden filter";
  Choose(L"Day", L"New Login");
  EXPECT_EQ(row(), L"||||||||||||") << "until the download has ended";
}

TEST_F(WindowBarsTest, ChartFollowsTheSelection) {
  WaitForEnd();
  ChartBar& chart = Session->GetWindows().Chart();
  ChartModel& model = chart.View().Model();
  EXPECT_FALSE(chart.IsBarShown());
  Watch().Grid().Select("BAC");
  Choose(L"View", L"Chart");
  EXPECT_TRUE(chart.IsDocked());
  EXPECT_EQ(model.Source().WhyEmpty, "NYSE BAC: no trades yet");
  auto& book = MakeBook(L"Book", RunningHost()->GetPluginBarID("Book"));
  auto& grid = MakeChild<CQORPGridCtrl>();
  ASSERT_TRUE(grid.Create(&book, wxID_ANY));
  for (const wchar_t* title : {L"SecurityID", L"ExchangeTradeTime", L"Exchange"})
    grid.InsertColumn(grid.GetColumnCount(), title, 50);
  const wchar_t* rows[][3] = {{L"BAC", L"20131007-00:00:01", L"NYSE"},
                              {L"IBM", L"20131007-01:00:00", L"ARCA"},
                              {L"IBM", L"20131007-00:50:00", L"ARCA"},
                              {L"IBM", L"20131007-00:55:00", L"ARCA"}};
  grid.EnableVirtualMode([&rows](int row, int column, CQORPGridCell& cell) {
    if (column >= 0) cell.Text = rows[row][column];
    return true;
  });
  grid.SetVirtualRows(4);
  book.ShowControlBar(true);
  DialogAnswers answers;
  Choose(L"View", L"Chart of Selected Rows");
  ASSERT_EQ(answers.Said.size(), 1U);
  EXPECT_EQ(answers.Said[0], L"Terminal: no rows with times are selected in the book \"Book\"");
  grid.SetCurSel(1);
  EXPECT_TRUE(PumpUntil([&] {
    grid.GetRowsWindow()->SetFocus();
    return model.IsOf("ARCA", "IBM");
  })) << "the row of the book with the focus";
  EXPECT_EQ(model.Source().Points.size(), 4U);
  grid.SelectAll();
  Choose(L"View", L"Chart of Selected Rows");
  EXPECT_EQ(model.Range(), RangeAround(1381104000 + 3000, 1381104000 + 3600, FullRange(model.Source().Points)));
  EXPECT_EQ(answers.Said.size(), 1U);
  Watch().Grid().Select("BAC");
  EXPECT_TRUE(PumpUntil([&] {
    Watch().SetFocus();
    return model.IsOf("NYSE", "BAC");
  }));
  Session->Commands().Run(TerminalCommand::Positions);
  Positions().ShowChanges();
  Positions().Grid().SetCurSel(0);
  EXPECT_TRUE(PumpUntil([&] {
    Positions().SetFocus();
    return model.IsOf("ARCA", "IBM");
  }));
  Close();
  Open();
  EXPECT_TRUE(Session->GetWindows().Chart().IsDocked()) << "as it was";
}

std::string TextOf(const LogGrid& grid, int row, LogColumn column) {
  return WideToCodePage(grid.TextAt(row, static_cast<std::size_t>(column)));
}

TEST_F(WindowBarsTest, LogsMessagesOfBothDirections) {
  LogGrid& grid = Session->GetWindows().Messages().Grid();
  const auto shown = [&grid](LogColumn column) {
    Texts texts;
    for (int row = 0; row < grid.GetVirtualRows(); ++row) texts.push_back(TextOf(grid, row, column));
    return texts;
  };
  WaitForEnd();
  Choose(L"View", L"Messages");
  EXPECT_TRUE(Session->GetWindows().Messages().IsDocked());
  EXPECT_TRUE(PumpUntil([&grid] { return grid.GetVirtualRows() > 0; }));
  EXPECT_EQ(shown(LogColumn::Number),
            (Texts{"9101", "9101", "30020", "32022", "8112", "8111", "8111", "30022", "30026", "32005", "30025"}));
  EXPECT_EQ(TextOf(grid, 8, LogColumn::Fields), "20128=0 30002=0");
  EXPECT_EQ(TextOf(grid, -1, LogColumn::Number) + TextOf(grid, 11, LogColumn::Number), "");
  grid.SetFilterText(static_cast<int>(LogColumn::Direction), L"FROM");
  EXPECT_EQ(shown(LogColumn::Meaning), (Texts{"what is selected?", "register the beat"}));
  grid.SetCurSel(0);
  Ask(&Watch());
  EXPECT_TRUE(PumpUntil([&grid] { return grid.GetVirtualRows() == 3; }));
  EXPECT_EQ(grid.GetCurSel(), 1) << "the same message";
  DialogAnswers answers;
  answers.SaveAs = TestFolder() / "messages.csv";
  Press(*grid.GetRowsWindow(), 'S', kControl);
  const std::string saved = ReadFile(answers.SaveAs);
  EXPECT_EQ(std::count(saved.begin(), saved.end(), '\n'), 4);
  EXPECT_GT(saved.find(",32005,register the beat,"), saved.find(",32022,what is selected?,")) << "as shown";
  grid.SetFilterText(static_cast<int>(LogColumn::Number), L"05");
  EXPECT_EQ(shown(LogColumn::Meaning), Texts{"register the beat"});
  answers.SaveAs = TestFolder() / "no" / "messages.csv";
  EXPECT_TRUE(grid.RunContextMenu({L"Save As..."}));
  EXPECT_EQ(answers.Said.size(), 1U) << "no such folder";
  Press(*grid.GetRowsWindow(), 'C', kControl);
  EXPECT_NE(CopiedText().find("from plug-in\t32005\tregister the beat"), std::string::npos) << CopiedText();
  answers.SaveAs = TestFolder() / "day.html";
  Session->Commands().Run(TerminalCommand::DayReport);
  EXPECT_NE(ReadFile(answers.SaveAs).find("<h1>Day report: "), std::string::npos);
  EXPECT_TRUE(grid.RunContextMenu({L"Clear"}));
  EXPECT_EQ(grid.GetVirtualRows(), 0);
  Session->Commands().Run(TerminalCommand::RefreshBooks);
  EXPECT_TRUE(grid.RunContextMenu({L"Reset Filter"}));
  EXPECT_EQ(shown(LogColumn::Number), Texts{"30020"});
}

TEST_F(WindowBarsTest, LogShowsTheLatestMessages) {
  MessageLog log;
  auto& grid = MakeChild<LogGrid>(log);
  ASSERT_TRUE(grid.Create(Frame, wxID_ANY));
  for (const std::size_t more : {std::size_t{3}, MessageLog::kMost}) {
    for (std::size_t i = 0; i < more; ++i) log.Add(true, 30020, {});
    grid.ShowChanges();
  }
  ASSERT_EQ(grid.GetVirtualRows(), static_cast<int>(MessageLog::kMost));
  EXPECT_EQ(TextOf(grid, grid.GetVirtualRows() - 1, LogColumn::Count), "4");
  Frame->DestroyChildren();  // ahead of the log
}

// What colour a part of a picture has: green or red by one letter, blank for neither.
char ColourOf(const wxImage& image, const wxRect& part, int least) {
  for (int y = part.y; y <= part.GetBottom(); ++y)
    for (int x = part.x; x <= part.GetRight(); ++x)
      if (const int more = image.GetGreen(x, y) - image.GetRed(x, y); std::abs(more) >= least)
        return more > 0 ? 'g' : 'r';
  return ' ';
}

TEST_F(WindowBarsTest, MarketWatchColoursChangesAndMarksFreshRows) {
  SecurityList securities(WriteSecurities("A,UP,S,N,EQ,,XX,0,1\nA,FLAT,S,N,EQ,,XX,0,1\nA,NONE,S,N,EQ,,XX,0,1\n"),
                          BadLines);
  MarketWatch rows(securities);
  auto& grid = MakeChild<MarketWatchGrid>(rows, [] {});
  ASSERT_TRUE(grid.Create(Frame, wxID_ANY));
  EXPECT_EQ(grid.GetVirtualRows(), 3) << "ahead of the first trade";
  Frame->SendSizeEvent();
  for (const double price : {10., 12., 11.5}) rows.OnTradeSent({"A", "UP", {}, {}, {}, "x-09:30:00", 5, price});
  rows.OnTradeSent({"A", "FLAT", {}, {}, {}, "x-09:30:00", 5, 10});
  grid.SetCurSel(2);
  // Texts of security, last, change and quantity in two rows, then the backgrounds of these cells.
  const auto colours = [&] {
    grid.ShowChanges();
    const wxImage image = PictureOf(*grid.GetRowsWindow());
    std::string texts, backgrounds;
    for (const auto& [row, column] : {std::pair(0, 1), {0, 5}, {0, 6}, {0, 8}, {1, 1}, {1, 5}, {1, 6}, {1, 8}}) {
      const wxRect cell = grid.CellRect(row, column).Deflate(3);
      texts += ColourOf(image, cell, 60);
      backgrounds += ColourOf(image, wxRect(cell.GetTopLeft(), wxSize(1, 1)), 8);
    }
    return texts + backgrounds;
  };
  EXPECT_EQ(colours(), " rg      rg     ");
  EXPECT_EQ(colours(), " rg             ") << "a beat later";
  grid.SelectAll();
  ASSERT_TRUE(grid.Copy());
  EXPECT_NE(CopiedText().find("A\tNONE\tS\tN\t\t\t\t\t\t\t"), std::string::npos) << "a row without trades";
  grid.SetPlace({{{L"Gone", 50, {}}, {rows.Columns()[5].Title, 77, {}}}, L"Gone"});
  EXPECT_EQ(grid.GetColumnsInfo().DisplayColumns().front(), 5);
  Frame->DestroyChildren();  // ahead of the rows
}

}  // namespace
