// The terminal's windows with a plug-in that writes down what it is told.
#include "terminal/windows/window_session.h"

#include <wx/uiaction.h>

#include <algorithm>
#include <sstream>

#include "host_link/packet_reader.h"
#include "terminal/windows/screen_picture.h"
#include "tests/terminal/test_files.h"
#include "tests/toolkit/gui_test.h"

namespace {

std::vector<std::string> Answers;
void NoteAnswer(CQORPacketReader* message) {
  const std::string bytes(reinterpret_cast<const char*>(message->Data), message->End);
  Answers.push_back(bytes.substr(15));  // behind header and number
}

class WindowSession : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    if (IsSkipped()) return;
    WriteTestFile("securities.csv", std::string(kSecurityHeader) +
                                        "NYSE,BAC,BAC,BANK,EQ,,XX,0,1\n"
                                        "ARCA,IBM,IBM,BIG BLUE,EQ,,XX,0,2.5\n");
    WriteTestFile("desk.csv", std::string(kDeskHeader) + kDeskLine);
    Given.Day = WriteTestFile("day.csv", kTradeHeader + TradeLine("20131007-00:00:01", "1") +
                                             TradeLine("20131007-00:00:02", "2") + TradeLine("20131007-00:00:03", "3") +
                                             TradeLine("20131007-01:00:00", "4"));
    Given.Live = ParseLiveFrom("2");
    Given.SpeedGiven = true;
    Given.Plugin = ProgramFolder() / (std::string("fake_plugin") + ModuleSuffix());
    Given.Work = TestFolder() / "work";
    std::filesystem::create_directories(ProgramFolder() / "working_folder");  // no samples for it
    Home = std::filesystem::current_path();
    Open();
  }
  void TearDown() override {
    Session.reset();
    std::filesystem::current_path(Home);
    GuiTest::TearDown();
  }
  void Open() {
    Session = std::make_unique<CWindowSession>(RunFiles(Given), Given, BadLines);
    Session->Open();
    ASSERT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded() || Session->GetDay().DayTrades() == 3; }));
  }
  // What the plug-in was told, but for its refreshes.
  std::string Log() { return Without(ReadTestFile(Given.Work / "fake_plugin.log"), "refresh\n"); }
  void Ask(const void* window) {
    CQORPacketWriter question(0);
    question.AddU16(10002, 32022);
    question.AddU64(30002, reinterpret_cast<std::uint64_t>(&NoteAnswer));
    question.AddU64(30001, reinterpret_cast<std::uint64_t>(window));
    RunningHost()->PluginDataSend(&question);
  }

  Options Given;
  std::filesystem::path Home;
  std::ostringstream Reports;
  CBadLines BadLines{Reports};
  std::unique_ptr<CWindowSession> Session;
};

const std::string kDownload = "routed 8112\nmaster BIG BLUE 2.5\nbars 1\nraw 30020\n";

TEST_F(WindowSession, PlaysTheDayAndLogsInAnew) {
  EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  const std::string start = "raw 30025\nexported 30026\nraw 30022\nrouted 8111 1\nrouted 8111 2\n" + kDownload;
  const std::string day = start + "routed 9101 3\nrouted 9101 4\n";
  EXPECT_EQ(Log(), day);
  Session->Run(TerminalCommand::NewLogin);
  EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  const std::string again = "raw 30022\nrouted 8111 1\nrouted 8111 2\nrouted 8111 3\nrouted 8111 4\n" + kDownload;
  EXPECT_EQ(Log(), day + again);
  Session->Run(TerminalCommand::RefreshBooks);
  EXPECT_EQ(Log(), day + again + "raw 30020\n");
  Session->GetFrame()->Close();
  EXPECT_EQ(Log(), day + again + "raw 30020\nraw 30021\n");
  Pump();
  EXPECT_EQ(Session->GetFrame(), nullptr);
  EXPECT_TRUE(std::filesystem::exists(Given.Work / "TerminalWindows.xml"));
}

TEST_F(WindowSession, RunsThePluginsEntryByMenuAndKey) {
  const auto commands = [this] {
    const std::string log = Log();
    std::size_t count = 0;
    for (std::size_t at = 0; (at = log.find("command\n", at)) != std::string::npos; ++at) ++count;
    return count;
  };
  EXPECT_TRUE(Session->GetFrame()->RunMenu({L"Fakes", L"Fake Book"}));
  EXPECT_FALSE(Session->GetFrame()->RunMenu({L"Fakes", L"Fake"}));
  EXPECT_FALSE(Session->GetFrame()->RunMenu({L"Fakes"}));
  EXPECT_EQ(commands(), 1U);
  CMarketWatchBar& bar = Session->GetWatchBar();
  const struct {
    const char* Place;
    void (*Put)(CMarketWatchBar& bar);
  } places[] = {
      {"tab", [](CMarketWatchBar& moved) { moved.TabControlBar(); }},
      {"docked", [](CMarketWatchBar& moved) { moved.DockControlBar(DockSide::Left); }},
      {"floating", [](CMarketWatchBar& moved) { moved.FloatControlBar(wxRect(300, 300, 500, 300)); }},
  };
  for (const auto& row : places) {
    SCOPED_TRACE(row.Place);
    row.Put(bar);
    bar.ShowControlBar(true);
    ASSERT_TRUE(PumpUntil([&bar] { return bar.GetDockingManager()->BarOf(wxWindow::FindFocus()) == &bar; }));
    const std::size_t before = commands();
    wxUIActionSimulator().Char(WXK_F8);
    EXPECT_TRUE(PumpUntil([&] { return commands() > before; }));
    Pump();
    EXPECT_EQ(commands(), before + 1);
  }
  bar.Grid().SetCurSel(1);
  DoubleClick(*bar.Grid().GetRowsWindow(), bar.Grid().CellRect(0, 1).GetTopLeft() + wxPoint(5, 5));
  EXPECT_EQ(commands(), 5U);
  EXPECT_EQ(bar.Grid().GetCurSel(), 0);
  Press(*bar.Grid().GetRowsWindow(), WXK_RETURN);
  EXPECT_EQ(commands(), 6U);
}

TEST_F(WindowSession, AnswersWhatIsSelected) {
  CMarketWatchBar& bar = Session->GetWatchBar();
  const CQORPDockingControlBar* watch = &bar;
  Answers.clear();
  bar.Grid().SetCurSel(-1);
  Ask(watch);
  EXPECT_TRUE(bar.Grid().Select("IBM"));
  Ask(watch);
  Ask(nullptr);
  Ask(this);  // no window of the terminal
  EXPECT_EQ(Answers, (std::vector<std::string>{"", std::string("#\xE2\xD6\4\0ARCA#\x40\xD7\3\0IBM", 17)}));
  EXPECT_FALSE(bar.Grid().Select("ibm"));

  auto* book = std::make_unique<CQORPDockingControlBar>().release();  // the frame owns it
  ASSERT_TRUE(book->CreateBar(Session->GetFrame()->GetDockingManager(), L"Book", wxRect(200, 200, 300, 200),
                              RunningHost()->GetPluginBarID("Book")));
  const std::string before = Log();
  Ask(book);
  EXPECT_EQ(Log(), before + "raw 32022\n");
  EXPECT_EQ(Answers.size(), 2U);
}

TEST_F(WindowSession, ShowsTradesAndRemembersItsPlaces) {
  CMarketWatchGrid& grid = Session->GetWatchBar().Grid();
  EXPECT_TRUE(PumpUntil([this] { return Session->GetDay().HasEnded(); }));
  grid.ToggleSortColumn(5);  // a row with trades comes first
  EXPECT_EQ(grid.Select("IBM"), true);
  EXPECT_EQ(grid.GetCurSel(), 0);
  EXPECT_EQ(grid.Selected()->Trades, 4U);
  grid.SetColumnWidth(3, 333);
  // A window manager may still be placing the new window.
  int equal = 0;
  ASSERT_TRUE(PumpUntil([this, &equal] {
    const bool isWanted = Session->GetFrame()->GetSize() == wxSize(900, 640);
    if (!isWanted) Session->GetFrame()->SetSize(40, 60, 900, 640);
    equal = isWanted ? equal + 1 : 0;
    return equal == 30;
  }));
  PaintNow(*grid.GetRowsWindow());
  SavePicture(*Session->GetFrame(), TestFolder() / "windows.png");
  EXPECT_EQ(ReadTestFile(TestFolder() / "windows.png").substr(0, 8), "\x89PNG\r\n\x1A\n");
  Session->GetFrame()->Close();
  Session.reset();
  Open();
  EXPECT_EQ(Session->GetFrame()->GetSize(), wxSize(900, 640));
  EXPECT_EQ(Session->GetWatchBar().Grid().GetColumnsInfo().GetColumnWidth(3), 333);
  EXPECT_EQ(Session->GetWatchBar().Grid().GetColumnsInfo().GetColumnState(5), 1);
}

}  // namespace
